# Profile-guided optimisation: the compiler learns from a run of the program which paths are taken. The program is
# built once more in a folder of its own, with counters (HELVAN_PROFILE=train), and searches positions that no figure
# is measured on; what it counted goes into every compilation here (HELVAN_PROFILE=use). Any change of the sources
# trains anew and compiles all anew: the program never depends on what was built before.

set(HELVAN_TRAINING_DEPTH 10) # iterations
set(HELVAN_TRAINING ${PROJECT_BINARY_DIR}/training CACHE PATH
    "Where the program is trained; builds for other processors of one system may share what is counted there")

if(HELVAN_PROFILE STREQUAL "train")
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # Names without the build folder, so that the other folder finds the counts.
    set(profile_options -fprofile-generate=${HELVAN_COUNTS} -fprofile-update=single
        -fprofile-prefix-path=${PROJECT_BINARY_DIR})
  else()
    set(profile_options -fprofile-instr-generate=${HELVAN_COUNTS}/counts)
  endif()
  target_compile_options(helvan_flags INTERFACE ${profile_options})
  target_link_options(helvan_flags INTERFACE ${profile_options})
elseif(HELVAN_PROFILE STREQUAL "use")
  if((CMAKE_CROSSCOMPILING AND NOT CMAKE_CROSSCOMPILING_EMULATOR) OR HELVAN_SANITIZE OR CMAKE_CONFIGURATION_TYPES)
    message(FATAL_ERROR "A profile is for one plain build that this machine can run, if need be with an emulator: no "
      "sanitizers, no generator of several configurations")
  endif()
  set(toolchain)
  if(CMAKE_TOOLCHAIN_FILE)
    set(toolchain -DCMAKE_TOOLCHAIN_FILE=${CMAKE_TOOLCHAIN_FILE})
  endif()
  set(training ${HELVAN_TRAINING})
  string(TOUPPER "CMAKE_CXX_FLAGS_${CMAKE_BUILD_TYPE}" flags_of_type)
  set(counts ${training}/counts)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    set(merge ${CMAKE_COMMAND} -E true)
    # The command line and the dialogue are not trained.
    set(profile_options -fprofile-use=${counts} -fprofile-prefix-path=${PROJECT_BINARY_DIR} -Wno-missing-profile)
  else()
    find_program(HELVAN_PROFDATA NAMES llvm-profdata llvm-profdata-14 REQUIRED)
    set(merge ${HELVAN_PROFDATA} merge -o ${training}/profile ${counts}/counts)
    set(profile_options -fprofile-instr-use=${training}/profile -Wno-profile-instr-unprofiled
        -Wno-profile-instr-out-of-date)
  endif()
  # Counts of other sources would be refused.
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/*.cpp ${PROJECT_SOURCE_DIR}/src/*.h
    ${PROJECT_SOURCE_DIR}/tools/*.cpp ${PROJECT_SOURCE_DIR}/tools/*.h)
  add_custom_command(OUTPUT ${training}/trained
    COMMAND ${CMAKE_COMMAND} -E rm -rf ${counts}
    COMMAND ${CMAKE_COMMAND} -S ${PROJECT_SOURCE_DIR} -B ${training} -G ${CMAKE_GENERATOR} ${toolchain}
      -DCMAKE_CXX_COMPILER=${CMAKE_CXX_COMPILER} -DCMAKE_BUILD_TYPE=${CMAKE_BUILD_TYPE} -DHELVAN_ARCH=${HELVAN_ARCH}
      -DCMAKE_CXX_FLAGS=${CMAKE_CXX_FLAGS} -D${flags_of_type}=${${flags_of_type}} -DHELVAN_TESTS=OFF
      -DHELVAN_PROFILE=train -DHELVAN_COUNTS=${counts}
    COMMAND ${CMAKE_COMMAND} --build ${training} --target helvan-debug
    COMMAND ${CMAKE_CROSSCOMPILING_EMULATOR} ${training}/tools/helvan-debug${CMAKE_EXECUTABLE_SUFFIX} bench
      ${HELVAN_TRAINING_DEPTH} ${PROJECT_SOURCE_DIR}/tools/training.epd
    COMMAND ${merge}
    COMMAND ${CMAKE_COMMAND} -E touch ${training}/trained
    DEPENDS ${sources} ${PROJECT_SOURCE_DIR}/tools/training.epd
    COMMENT "Training" USES_TERMINAL VERBATIM)
  add_custom_target(helvan_training DEPENDS ${training}/trained)
  add_dependencies(helvan_flags helvan_training)
  function(helvan_compile_with_profile)
    foreach(folder src tools)
      file(GLOB_RECURSE compiled ${PROJECT_SOURCE_DIR}/${folder}/*.cpp)
      set_source_files_properties(${compiled} DIRECTORY ${PROJECT_SOURCE_DIR}/${folder}
        PROPERTIES OBJECT_DEPENDS ${training}/trained)
    endforeach()
  endfunction()
  cmake_language(DEFER CALL helvan_compile_with_profile) # when the folders are known
  target_compile_options(helvan_flags INTERFACE ${profile_options})
  target_link_options(helvan_flags INTERFACE ${profile_options})
elseif(HELVAN_PROFILE)
  message(FATAL_ERROR "HELVAN_PROFILE is \"train\", \"use\" or empty, not \"${HELVAN_PROFILE}\"")
endif()
