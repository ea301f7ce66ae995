// The selection that every calendar view shares: the selected date (each main view shows the
// period containing it) and the selected time (the day view scrolls to its hour).
#pragma once

#include "PLDate.h"
#include "PLTime.h"

extern PLDate g_selectDate;
extern PLTime g_selectTime;
