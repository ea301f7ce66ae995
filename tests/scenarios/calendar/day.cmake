# The day view's scenarios: rows and header rows, lunar row, hour labels, keys, taps, and the
# delete dialog (the store is checked with calendar-ctl afterwards).
calendar_scenario(day_empty scripts/day_empty.txt SEED day-empty.seed)
calendar_scenario(day_busy scripts/day_busy.txt SEED day-busy.seed)
calendar_scenario(day_lunar scripts/day_lunar.txt SEED day-lunar.seed)
calendar_scenario(day_lunar_off scripts/day_lunar_off.txt SEED day-busy.seed)
calendar_scenario(day_24h scripts/day_24h.txt SEED day-24h.seed)
calendar_scenario(day_headers scripts/day_headers.txt SEED day-headers.seed)
calendar_scenario(day_keys scripts/day_keys.txt SEED day-empty.seed)
calendar_scenario(day_tap_empty scripts/day_tap_empty.txt SEED day-busy.seed)
calendar_scenario(day_tap_label scripts/day_tap_label.txt SEED day-busy.seed)
calendar_scenario(day_tap_event scripts/day_tap_event.txt SEED day-busy.seed)
calendar_scenario(day_tap_header scripts/day_tap_header.txt SEED day-busy.seed)
calendar_scenario(day_from_month scripts/day_from_month.txt SEED day-month.seed)
calendar_scenario(day_delete_two scripts/day_delete_two.txt SEED day-busy.seed
    EXPECT_CTL "event list" "subject=Holiday.*subject=Standup.*subject=Review"
               "event list" "!subject=(Trip|Call)"
    EXPECT_LOG "\"id\":10040.*com.mdz.wpkhome.v1.*\"id\":18803.*com.mdz.qnalert.v1")
calendar_scenario(day_delete_series scripts/day_delete_series.txt SEED day-busy.seed
    EXPECT_CTL "event list" "subject=Standup" "event list" "!subject=(Review|Call)"
    EXPECT_LOG "\"id\":18803")
calendar_scenario(day_delete_cancel scripts/day_delete_cancel.txt SEED day-busy.seed
    EXPECT_CTL "event list" "subject=Review.*subject=Call"
    REJECT_LOG "18803|10040")
calendar_scenario(day_delete_all scripts/day_delete_all.txt SEED day-busy.seed
    EXPECT_CTL "query day 2026-11-21" "^$"
    EXPECT_LOG "\"id\":18803")
# From the day into an event's details and back, through its deletion, and into its edit form.
calendar_scenario(day_detail_back scripts/day_detail_back.txt SEED day-busy.seed)
calendar_scenario(day_detail_delete scripts/day_detail_delete.txt SEED day-busy.seed
    EXPECT_CTL "event list" "subject=Standup" "event list" "!subject=Call"
    EXPECT_LOG "\"id\":18803")
calendar_scenario(day_detail_edit scripts/day_detail_edit.txt SEED day-busy.seed
    EXPECT_CTL "event list" "subject=Standup")
calendar_scenario(day_detail_edit_save scripts/day_detail_edit_save.txt SEED day-busy.seed
    EXPECT_CTL "event list" "subject=\"?Standup daily")
calendar_scenario(day_header_arrows scripts/day_header_arrows.txt SEED day-busy.seed)
calendar_scenario(day_go_to_date scripts/day_go_to_date.txt SEED day-busy.seed)
calendar_scenario(day_delete_keys scripts/day_delete_keys.txt SEED day-month.seed
    EXPECT_CTL "event list" "!subject=Call")
