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
