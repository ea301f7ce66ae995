// The widget library in one include: theme, buttons, menus, texts and fields, lists, bars and
// scroll containers, dialogs and the input method.
#pragma once

#include "IMEManagerFactory.h"
#include "VtBarFactory.h"
#include "VtButtonFactory.h"
#include "VtDialogFactory.h"
#include "VtListFactory.h"
#include "VtMenuFactory.h"
#include "VtTextFactory.h"
#include "VtTheme.h"
