# find_package(QMUtil 1.42 REQUIRED) reads this file from lib/cmake/QMUtil of
# an installed tree; QMUtilConfigVersion.cmake beside it refuses an older
# release, another major release and the other architecture.
#
#   target_link_libraries(app PRIVATE QMUtil::QMUtil)
#
# QMUtil::QMUtil carries the include folder, the import library
# libQMUtil.dll.a and UNICODE/_UNICODE; its location is bin/QMUtil.dll, which
# the application ships beside its executable.
include("${CMAKE_CURRENT_LIST_DIR}/QMUtilTargets.cmake")
