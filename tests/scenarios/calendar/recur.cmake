# The repeat screens through the event form: a new event from the month view, its repeat row,
# the kind chooser and one editor per kind, then saved and read back from the store.
calendar_scenario(recur_daily scripts/recur_daily.txt
    EXPECT_CTL "event show 1" "kind=1 a=3 b=0 c=5 "
               "event show 1" "last_local=\"2026-12-03 08:00:00\"")
calendar_scenario(recur_weekly scripts/recur_weekly.txt
    EXPECT_CTL "event show 1" "kind=2 a=2 b=66 c=-1 "
               "event show 1" "last_local=\"2026-12-24 23:59:59\""
               "alarm list" "FREQ=WEEKLY;INTERVAL=2;.*BYDAY=MO,SA;.*UNTIL=20261224T235959Z"
               "alarm list" "next=\"2026-11-30 07:55:00,2026-12-05 07:55:00,2026-12-14 07:55:00")
calendar_scenario(recur_monthly scripts/recur_monthly.txt
    EXPECT_CTL "event show 1" "kind=4 a=1 b=515 c=3 "
               "event show 1" "last_local=\"2027-02-09 08:00:00\"")
calendar_scenario(recur_yearly scripts/recur_yearly.txt
    EXPECT_CTL "event show 1" "kind=8 a=2 b=29 c=1048575 "
               "event show 1" "last_local=\"2030-12-31 23:59:59\"")
calendar_scenario(recur_change_remove scripts/recur_change_remove.txt
    EXPECT_CTL "event show 1" "recurring=0 .*kind=0 ")
calendar_scenario(recur_back scripts/recur_back.txt
    EXPECT_CTL "event show 1" "recurring=0 .*kind=0 ")

# The same screens on their own, opened by the repeat harness (a stand-in form that edits event
# 1 of the seeded store and saves it back): stored rules, refusals and their notices.
function(recur_harness_scenario name script)
    cmake_parse_arguments(PARSE_ARGV 2 arg "" "SEED" "EXPECT_CTL")
    set(seed "")
    if(arg_SEED)
        set(seed ${CMAKE_CURRENT_SOURCE_DIR}/${arg_SEED})
    endif()
    cal_scenario_pair_defines(arg_EXPECT_CTL CTL_ CTL_REGEX_ defines checks)
    add_test(NAME scenario.calendar.${name}
        COMMAND ${CMAKE_COMMAND}
            -DSIM=$<TARGET_FILE:calendar-sim>
            -DCTL=$<TARGET_FILE:calendar-ctl>
            -DAPP=$<TARGET_FILE:recur_harness>
            -DSCRIPT=${CMAKE_CURRENT_SOURCE_DIR}/${script}
            -DSEED=${seed}
            -DWORK=${CMAKE_CURRENT_BINARY_DIR}/runs/${name}
            -DNOW=2026-11-21\ 09:41
            -DEXPECT_EXIT=0
            -DCTL_CHECKS=${checks}
            ${defines}
            -P ${CMAKE_CURRENT_SOURCE_DIR}/RunCalendarScenario.cmake)
    set_tests_properties(scenario.calendar.${name} PROPERTIES
        ENVIRONMENT "TZ=UTC" LABELS scenario TIMEOUT 120)
endfunction()

if(TARGET recur_harness)
    recur_harness_scenario(recur_stored_weekly scripts/recur_stored_weekly.txt
        SEED recur-weekly.seed
        EXPECT_CTL "event show 1" "kind=2 a=2 b=10 c=8 ")
    recur_harness_scenario(recur_refusals scripts/recur_refusals.txt SEED recur-overnight.seed
        EXPECT_CTL "event show 1" "kind=1 a=2 b=0 c=1048575 ")
    recur_harness_scenario(recur_monthly_refusal scripts/recur_monthly_refusal.txt
        SEED recur-overnight.seed
        EXPECT_CTL "event show 1" "recurring=0 .*kind=0 ")
endif()
