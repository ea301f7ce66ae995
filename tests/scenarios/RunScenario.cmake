# Runs one scenario (see cal_scenario in CMakeLists.txt) and checks its exit status, its standard
# error and the files it wrote. Invoked with cmake -P and the -D values that cal_scenario passes.
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})

set(command ${SIM} --headless --app ${APP} --root ${WORK}/root --now ${NOW} --script ${SCRIPT})
if(ARG_COUNT GREATER 0)
    math(EXPR last "${ARG_COUNT} - 1")
    foreach(index RANGE ${last})
        list(APPEND command "${ARG_${index}}")
    endforeach()
endif()

execute_process(COMMAND ${command}
    WORKING_DIRECTORY ${WORK}
    RESULT_VARIABLE status
    OUTPUT_VARIABLE out
    ERROR_VARIABLE err
    TIMEOUT 90)

set(problems)
if(NOT "${status}" STREQUAL "${EXPECT_EXIT}")
    list(APPEND problems "exit status ${status}, expected ${EXPECT_EXIT}")
endif()
if(NOT "${EXPECT_STDERR}" STREQUAL "" AND NOT "${err}" MATCHES "${EXPECT_STDERR}")
    list(APPEND problems "standard error does not match: ${EXPECT_STDERR}")
endif()
if(FILE_CHECKS GREATER 0)
    math(EXPR last "${FILE_CHECKS} - 1")
    foreach(index RANGE ${last})
        set(path ${WORK}/${FILE_${index}})
        if(NOT EXISTS ${path})
            list(APPEND problems "${FILE_${index}} was not written")
            continue()
        endif()
        file(READ ${path} content)
        if(NOT content MATCHES "${REGEX_${index}}")
            list(APPEND problems "${FILE_${index}} does not match: ${REGEX_${index}}")
        endif()
    endforeach()
endif()

if(problems)
    string(REPLACE ";" "\n  " listed "${problems}")
    message(FATAL_ERROR "scenario ${SCRIPT} failed:\n  ${listed}\n"
        "command: ${command}\n--- stdout\n${out}--- stderr\n${err}")
endif()
