# The new-event form: typed and saved with an alarm and a colour, left with and without changes,
# all-day, the end-before-start notices, the empty-subject question, Chinese text, and a new event
# from the day view's empty hour.
calendar_scenario(form_new_saved scripts/form_new_saved.txt
    EXPECT_CTL "event list" "subject=Dentist location=Clinic .*start_local=\"2026-11-21 10:00:00\" end_local=\"2026-11-21 11:00:00\""
               "event list" "alarm=1 kind=0 .*colour=11548 class=11561 alert_id=1 lead_amount=15 lead_unit=1"
               "alarm list" "time=1795254300 rule=FREQ=DAILY;INTERVAL=1;COUNT=1;BYHOUR=9;BYMINUTE=45;BYSECOND=0 local_time_flag=0"
    EXPECT_LOG "\"id\":10040.*com.mdz.wpkhome.v1")
calendar_scenario(form_cancel scripts/form_cancel.txt
    EXPECT_CTL "event list" "!subject"
    REJECT_LOG "10040")
calendar_scenario(form_all_day scripts/form_all_day.txt
    EXPECT_CTL "event list" "subject=Holiday .*start_local=\"2026-11-21 00:00:00\" end_local=\"2026-11-23 23:59:59\" .*all_day=1 ")
calendar_scenario(form_end_before_start scripts/form_end_before_start.txt
    EXPECT_CTL "event list" "start_local=\"2026-11-21 08:00:00\" end_local=\"2026-11-21 09:00:00\"")
calendar_scenario(form_empty_subject scripts/form_empty_subject.txt
    EXPECT_CTL "event list" "id=1 subject=\"\" ")
calendar_scenario(form_chinese scripts/form_chinese.txt
    EXPECT_CTL "event list" "subject=\"牙医 复诊\" .*notes=带上病历 ")
calendar_scenario(form_from_day scripts/form_from_day.txt SEED day-busy.seed
    EXPECT_CTL "event list" "subject=Lunch .*start_local=\"2026-11-21 10:00:00\" end_local=\"2026-11-21 11:00:00\"")
calendar_scenario(form_edit scripts/form_edit.txt SEED day-busy.seed
    EXPECT_CTL "event show 3" "subject=\"Standup moved\" .*start_local=\"2026-11-21 10:00:00\" end_local=\"2026-11-21 10:15:00\""
               "event show 3" "alarm=1 kind=0 .*alert_id=1 lead_amount=5 lead_unit=1"
               "alarm list" "daemon_id=1 owner=1 time=1795254900 rule=FREQ=DAILY;INTERVAL=1;COUNT=1;BYHOUR=9;BYMINUTE=55;"
               "event list" "!id=8")
calendar_scenario(form_edit_series scripts/form_edit_series.txt SEED day-busy.seed
    EXPECT_CTL "event show 4" "subject=\"Review team\" .*recurring=1 alarm=1 kind=1 a=1 b=0 c=5 "
               "alarm list" "daemon_id=2 owner=2 .*rule=FREQ=DAILY;INTERVAL=1;BYHOUR=9;BYMINUTE=25;BYSECOND=0;COUNT=5")
calendar_scenario(form_weekly_alarm scripts/form_weekly_alarm.txt
    EXPECT_CTL "event show 1" "subject=Swim .*recurring=1 alarm=1 kind=2 a=1 b=64 c=1048575 "
               "alarm list" "time=1795254300 rule=FREQ=WEEKLY;INTERVAL=1;WKST=SU;BYDAY=SA;BYHOUR=9;BYMINUTE=45")
calendar_scenario(form_keep_time scripts/form_keep_time.txt SEED keep-week.seed
    EXPECT_CTL "event list" "!subject"
    REJECT_LOG "10040")
calendar_scenario(form_keys scripts/form_keys.txt)
string(REPEAT x 200 two_hundred_x)
calendar_scenario(form_overlong scripts/form_overlong.txt
    EXPECT_CTL "event show 1" "subject=${two_hundred_x} location")
