# The week view's scenarios.
calendar_scenario(week_busy scripts/week_busy.txt SEED week-busy.seed)
calendar_scenario(week_scrolled scripts/week_scrolled.txt SEED week-busy.seed)
calendar_scenario(week_keys scripts/week_keys.txt SEED week-first.seed NOW "2030-12-20 12:00")
calendar_scenario(week_pen scripts/week_pen.txt SEED week-busy.seed)
calendar_scenario(week_pen_drag scripts/week_pen_drag.txt SEED week-busy.seed)
calendar_scenario(week_tap_name scripts/week_tap_name.txt SEED week-busy.seed)
calendar_scenario(week_tap_number scripts/week_tap_number.txt SEED week-busy.seed)
calendar_scenario(week_from_month scripts/week_from_month.txt SEED busy.seed)
calendar_scenario(week_go_to_date scripts/week_go_to_date.txt SEED week-busy.seed)
calendar_scenario(week_empty scripts/week_empty.txt SEED week-first.seed)
calendar_scenario(week_monday scripts/week_monday.txt SEED week-monday.seed)
calendar_scenario(week_settings scripts/week_settings.txt SEED week-busy.seed
    EXPECT_CTL "config get first_weekday" "first_weekday 11426")
calendar_scenario(week_delete_yes_yes scripts/week_delete_yes_yes.txt SEED week-delete.seed
    EXPECT_CTL "event list" "subject=NextWeek" "event list" "!subject=(Single|Gym)"
    EXPECT_LOG "\"id\":18803.*com.mdz.wpkhome.v1.*com.mdz.qnalert.v1.*\"id\":10040")
calendar_scenario(week_delete_yes_no scripts/week_delete_yes_no.txt SEED week-delete.seed
    EXPECT_CTL "event list" "subject=Gym.*subject=Single.*subject=NextWeek"
    REJECT_LOG "18803|10040")
calendar_scenario(week_delete_no scripts/week_delete_no.txt SEED week-delete.seed
    EXPECT_CTL "event list" "subject=Gym.*subject=Single.*subject=NextWeek"
    REJECT_LOG "18803|10040")
calendar_scenario(week_delete_single scripts/week_delete_single.txt SEED week-single.seed
    EXPECT_CTL "event list" "subject=NextWeek" "event list" "!subject=(Single|Trip)"
    EXPECT_LOG "\"id\":18803.*\"id\":10040")
