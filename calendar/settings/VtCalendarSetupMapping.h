// How the settings record maps onto the settings view's menus, which values are kept when saved,
// and which views must reload after a change.
#pragma once

#include <cstddef>
#include <cstdint>

#include "APConfig.h"

// Change flags of the settings' "valu" message: the views that must reload.
constexpr uint32_t kSetupReloadMonth = 1;
constexpr uint32_t kSetupReloadWeek = 2;
constexpr uint32_t kSetupReloadDay = 4;

// 1-based menu indexes for stored values; 0 when the value has no entry.
size_t DefaultViewMenuIndex(int32_t value);
// The first-weekday menu lists Monday (11425) first and Sunday (11424) last.
size_t FirstWeekdayMenuIndex(int32_t value);
size_t KeepTimeMenuIndex(int32_t value);

// The record to write: each of the five fields as given when valid, else its default (month
// view, Sunday, 8 o'clock, keep everything, no lunar dates). Fields past the fifth are kept.
APCONFIG_CALENDAR_S ValidatedSettings(const APCONFIG_CALENDAR_S& chosen);

// Flags of the views that must reload when `saved` replaces `loaded`.
uint32_t SettingsChangeFlags(const APCONFIG_CALENDAR_S& loaded, const APCONFIG_CALENDAR_S& saved);
