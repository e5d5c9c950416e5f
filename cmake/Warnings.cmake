# Compile settings every target of the project shares.
add_library(qm_options INTERFACE)
target_compile_features(qm_options INTERFACE cxx_std_17)
target_compile_definitions(qm_options INTERFACE
  UNICODE _UNICODE WIN32_LEAN_AND_MEAN NOMINMAX _WIN32_WINNT=0x0601 WINVER=0x0601)
target_compile_options(qm_options INTERFACE
  $<$<COMPILE_LANGUAGE:CXX>:-Wall -Wextra -Werror>)
