# The repeat screens through the event form: a new event from the month view, its repeat row,
# the kind chooser and one editor per kind, then saved and read back from the store.
calendar_scenario(recur_daily scripts/recur_daily.txt
    EXPECT_CTL "event show 1" "kind=1 a=3 b=0 c=5 "
               "event show 1" "last_local=\"2026-12-03 08:00:00\"")
calendar_scenario(recur_weekly scripts/recur_weekly.txt
    EXPECT_CTL "event show 1" "kind=2 a=2 b=66 c=-1 "
               "event show 1" "last_local=\"2026-12-24 23:59:59\"")
calendar_scenario(recur_monthly scripts/recur_monthly.txt
    EXPECT_CTL "event show 1" "kind=4 a=1 b=515 c=3 "
               "event show 1" "last_local=\"2027-02-09 08:00:00\"")
calendar_scenario(recur_yearly scripts/recur_yearly.txt
    EXPECT_CTL "event show 1" "kind=8 a=2 b=29 c=1048575 "
               "event show 1" "last_local=\"2030-12-31 23:59:59\"")
calendar_scenario(recur_back scripts/recur_back.txt
    EXPECT_CTL "event show 1" "recurring=0 .*kind=0 ")
