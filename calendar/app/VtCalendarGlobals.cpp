// Storage of the shared selection; start-up sets both before any view exists.
#include "app/VtCalendarGlobals.h"

PLDate g_selectDate;
PLTime g_selectTime;
