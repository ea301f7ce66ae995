# Journeys: whole tasks as a person does them, across the month, week and day views, the form, the
# repeat editors, the detail view, the delete dialog and the settings; each checked in the store.
calendar_scenario(journey_weekly_meeting scripts/journey_weekly_meeting.txt
    EXPECT_CTL "event show 1" "subject=Planning .*start_local=\"2026-11-17 10:00:00\" end_local=\"2026-11-17 11:00:00\""
               "event show 1" "recurring=1 alarm=1 kind=2 a=1 b=4 c=1048575 .*lead_amount=15 lead_unit=1"
               "alarm list" "rule=FREQ=WEEKLY;INTERVAL=1;WKST=SU;BYDAY=TU;BYHOUR=9;BYMINUTE=45;.* next=\"2026-11-24 09:45:00,2026-12-01 09:45:00")
