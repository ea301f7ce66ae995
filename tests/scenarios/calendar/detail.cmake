# The detail view's scenarios, opened from the day view: reading every line, export and share to
# the outbox (the saved files are imported back with calendar-ctl and compared), delete with both
# questions and both answers, and edit through the form.
calendar_scenario(detail_read scripts/detail_read.txt SEED detail.seed NOW "2026-11-21 09:41")
calendar_scenario(detail_share scripts/detail_share.txt SEED detail.seed NOW "2026-11-21 09:41"
    EXPECT_CTL "event import root/var/outbox/2.vcs" "^5"
               "event show 5"
               "subject=Standup location=\"Room 4\" notes=\"Bring the sprint board\".*start_local=\"2026-11-21 09:00:00\" end_local=\"2026-11-21 09:15:00\".*colour=11550.*lead_amount=15 lead_unit=1"
               "event import root/var/outbox/3_1.vcs" "^6"
               "event show 6" "repeat_text=\"Every 2 weeks on Sa, until 2027-06-30\""
    REJECT_LOG "18803")
calendar_scenario(detail_delete_one scripts/detail_delete_one.txt SEED detail.seed
    NOW "2026-11-21 09:41"
    EXPECT_CTL "event list" "subject=Holiday.*subject=Review" "event list" "!subject=Standup"
    EXPECT_LOG "\"id\":10040.*com.mdz.wpkhome.v1.*\"id\":18803.*com.mdz.qnalert.v1")
calendar_scenario(detail_delete_series scripts/detail_delete_series.txt SEED detail.seed
    NOW "2026-11-21 09:41"
    EXPECT_CTL "event list" "subject=Standup" "event list" "!subject=Review"
    EXPECT_LOG "\"id\":18803")
calendar_scenario(detail_delete_cancel scripts/detail_delete_cancel.txt SEED detail.seed
    NOW "2026-11-21 09:41"
    EXPECT_CTL "event list" "subject=Standup.*subject=Review"
    REJECT_LOG "18803|10040")
calendar_scenario(detail_edit scripts/detail_edit.txt SEED detail.seed NOW "2026-11-21 09:41"
    EXPECT_CTL "event show 2" "subject=\"Standup moved\" location=\"Room 4\"")
calendar_scenario(detail_edit_series scripts/detail_edit_series.txt SEED detail.seed
    NOW "2026-11-21 09:41"
    EXPECT_CTL "event show 3" "subject=Review")
