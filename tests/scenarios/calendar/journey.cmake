# Journeys: whole tasks as a person does them, across the month, week and day views, the form, the
# repeat editors, the detail view, the delete dialog and the settings; each checked in the store.
calendar_scenario(journey_weekly_meeting scripts/journey_weekly_meeting.txt
    EXPECT_CTL "event show 1" "subject=Planning .*start_local=\"2026-11-17 10:00:00\" end_local=\"2026-11-17 11:00:00\""
               "event show 1" "recurring=1 alarm=1 kind=2 a=1 b=4 c=1048575 .*lead_amount=15 lead_unit=1"
               "alarm list" "rule=FREQ=WEEKLY;INTERVAL=1;WKST=SU;BYDAY=TU;BYHOUR=9;BYMINUTE=45;.* next=\"2026-11-24 09:45:00,2026-12-01 09:45:00")
calendar_scenario(journey_move_appointment scripts/journey_move_appointment.txt SEED journey-move.seed
    EXPECT_CTL "event show 1" "subject=Dentist location=\"Main street 12\" .*start_local=\"2026-11-27 11:00:00\" end_local=\"2026-11-27 12:00:00\""
               "event list" "!2026-11-20")
calendar_scenario(journey_month_end_rules scripts/journey_month_end_rules.txt
    EXPECT_CTL "event show 1" "subject=Rent .*start_local=\"2026-12-31 10:00:00\" .*recurring=1 alarm=0 kind=4 a=1 b=31 c=1048575 "
               "event show 2" "subject=\"Leap day\" .*start_local=\"2028-02-29 10:00:00\" .*recurring=1 alarm=0 kind=8 a=2 b=29 c=1048575 "
               "query day 2029-02-28" "id=2 first=2029-02-28 .*subject=\"Leap day\""
               "query day 2027-02-28" "!id=1"
               "query day 2027-03-31" "id=1 first=2027-03-31 .*subject=Rent")
calendar_scenario(journey_delete_series scripts/journey_delete_series.txt SEED journey-series.seed
    EXPECT_CTL "event list" "!subject=Gym" "event list" "subject=\"Book club\""
               "alarm list" "!owner"
    EXPECT_LOG "\"id\":18803")
calendar_scenario(journey_delete_three scripts/journey_delete_three.txt SEED journey-day.seed
    EXPECT_CTL "event list" "!subject=(Breakfast|Dentist|Cinema)"
               "event list" "subject=Standup.*subject=Weekend"
               "alarm list" "!owner")
calendar_scenario(journey_discard_form scripts/journey_discard_form.txt SEED journey-discard.seed
    EXPECT_CTL "event list" "!Picnic" "event list" "!moved" "event show 1" "subject=Dentist "
    REJECT_LOG "10040")
calendar_scenario(journey_settings_follow scripts/journey_settings_follow.txt SEED journey-settings.seed
    EXPECT_CTL "config get" "first_weekday 11425" "config get" "day_start 6")
calendar_scenario(journey_time_format scripts/journey_time_12.txt SEED journey-time.seed
    THEN journey-time-24.seed scripts/journey_time_24.txt
    EXPECT_CTL "config get time_format" "time_format 24")
