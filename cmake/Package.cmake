# The release number, the install tree, the CMake package, the release ZIP,
# and the tests that build an application against the installed package.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

# project(QMUtil VERSION ...) is the one place the release number is set: the
# DLL's version resource and qmtool read it from this generated header.
set(QM_GENERATED_DIR ${CMAKE_BINARY_DIR}/generated)
configure_file(${CMAKE_CURRENT_LIST_DIR}/QMBuildVersion.h.in ${QM_GENERATED_DIR}/QMBuildVersion.h @ONLY)
target_include_directories(QMUtil PRIVATE ${QM_GENERATED_DIR})
target_include_directories(qmtool PRIVATE ${QM_GENERATED_DIR})
set_source_files_properties(${CMAKE_SOURCE_DIR}/src/res/QMUtil.rc DIRECTORY src
  PROPERTIES OBJECT_DEPENDS ${QM_GENERATED_DIR}/QMBuildVersion.h)

# bin/ the DLL and the programs, lib/ the import library, include/ every
# header with the path it has under src/, so new folders need no edit here.
# The headers only the library's own sources include stay out: nothing an
# application includes reaches them.
install(TARGETS QMUtil EXPORT QMUtilTargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY ${CMAKE_SOURCE_DIR}/src/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
  FILES_MATCHING PATTERN "*.h"
  PATTERN "res" EXCLUDE
  REGEX "/(config/OnceSetting|config/ProcessSettings|controls/ColorPalette|frame/Library|platform/win/WndRouting)\\.h$" EXCLUDE)
install(TARGETS qmtool RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
if(TARGET gallery)
  install(TARGETS gallery RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()
# The installed README without the gallery picture, which the demo makes and
# the archive does not hold; beside it a commented start-up file to copy.
file(READ ${CMAKE_SOURCE_DIR}/README.md readme)
string(REGEX REPLACE "!\\[[^]\n]*\\]\\(out/gallery\\.png\\)\n\n?" "" readme "${readme}")
file(WRITE ${CMAKE_BINARY_DIR}/README.md "${readme}")
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/README.md)
install(FILES ${CMAKE_BINARY_DIR}/README.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(FILES ${CMAKE_SOURCE_DIR}/samples/INIT.ini.sample DESTINATION ${CMAKE_INSTALL_DATADIR}/QMUtil)

# find_package(QMUtil 1.42) accepts 1.42 and later 1.x of the same
# architecture: an x86 package is no use to an x64 application.
set(QM_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/QMUtil)
install(EXPORT QMUtilTargets NAMESPACE QMUtil:: DESTINATION ${QM_PACKAGE_DIR})
write_basic_package_version_file(${CMAKE_BINARY_DIR}/QMUtilConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_LIST_DIR}/QMUtilConfig.cmake ${CMAKE_BINARY_DIR}/QMUtilConfigVersion.cmake
  DESTINATION ${QM_PACKAGE_DIR})

# scripts/package: QMUtil-<version>-win64.zip or -win32.zip of the install tree.
if(CMAKE_SIZEOF_VOID_P EQUAL 8)
  set(CPACK_SYSTEM_NAME win64)
else()
  set(CPACK_SYSTEM_NAME win32)
endif()
set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
include(CPack)

# tests/consumer is an application of its own that sees only the installed
# tree: the build is installed into a stage, the application configured and
# built against it with this build's toolchain, then run under Wine. Asking
# for a newer release, or for a package that is not there, must fail with
# CMake's own message.
if(BUILD_TESTING)
  set(QM_CONSUMER_SOURCE ${CMAKE_SOURCE_DIR}/tests/consumer)
  set(QM_CONSUMER_DIR ${CMAKE_BINARY_DIR}/consumer)
  set(QM_STAGE ${QM_CONSUMER_DIR}/stage)
  math(EXPR QM_NEXT_MINOR "${PROJECT_VERSION_MINOR} + 1")
  set(QM_NEXT_RELEASE ${PROJECT_VERSION_MAJOR}.${QM_NEXT_MINOR})
  set(QM_CONSUMER_CONFIGURE ${CMAKE_COMMAND} -S ${QM_CONSUMER_SOURCE} -G ${CMAKE_GENERATOR}
    -DCMAKE_MAKE_PROGRAM=${CMAKE_MAKE_PROGRAM} -DCMAKE_TOOLCHAIN_FILE=${CMAKE_TOOLCHAIN_FILE})

  add_test(NAME consumer.clean COMMAND ${CMAKE_COMMAND} -E rm -rf ${QM_CONSUMER_DIR})
  add_test(NAME consumer.install COMMAND ${CMAKE_COMMAND} --install ${CMAKE_BINARY_DIR} --prefix ${QM_STAGE})
  add_test(NAME consumer.build COMMAND ${CMAKE_CTEST_COMMAND} --build-and-test ${QM_CONSUMER_SOURCE}
    ${QM_CONSUMER_DIR}/build --build-generator ${CMAKE_GENERATOR} --build-makeprogram ${CMAKE_MAKE_PROGRAM}
    --build-options -DCMAKE_TOOLCHAIN_FILE=${CMAKE_TOOLCHAIN_FILE} -DCMAKE_PREFIX_PATH=${QM_STAGE}
    -DCMAKE_BUILD_TYPE=Release)
  add_test(NAME consumer.run COMMAND ${CMAKE_CROSSCOMPILING_EMULATOR} ${QM_CONSUMER_DIR}/build/consumer.exe)
  add_test(NAME consumer.older COMMAND ${QM_CONSUMER_CONFIGURE} -B ${QM_CONSUMER_DIR}/older
    -DCMAKE_PREFIX_PATH=${QM_STAGE} -DQMUTIL_WANTED=${QM_NEXT_RELEASE})
  add_test(NAME consumer.missing COMMAND ${QM_CONSUMER_CONFIGURE} -B ${QM_CONSUMER_DIR}/missing
    -DCMAKE_PREFIX_PATH=${QM_CONSUMER_DIR}/no-such-prefix)

  set_tests_properties(consumer.clean PROPERTIES FIXTURES_SETUP qm_clean)
  set_tests_properties(consumer.install PROPERTIES FIXTURES_REQUIRED qm_clean FIXTURES_SETUP qm_stage)
  set_tests_properties(consumer.build PROPERTIES FIXTURES_REQUIRED qm_stage FIXTURES_SETUP qm_consumer)
  set_tests_properties(consumer.run PROPERTIES FIXTURES_REQUIRED qm_consumer)
  set_tests_properties(consumer.older PROPERTIES FIXTURES_REQUIRED qm_stage
    PASS_REGULAR_EXPRESSION "requested[ \n]+version[ \n]+\"${QM_NEXT_RELEASE}\"")
  set_tests_properties(consumer.missing PROPERTIES FIXTURES_REQUIRED qm_clean
    PASS_REGULAR_EXPRESSION "package[ \n]+configuration[ \n]+file[ \n]+provided[ \n]+by[ \n]+\"QMUtil\"")
endif()
