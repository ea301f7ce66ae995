// The platform's status area: time, date and battery at the top of the screen.
#include "PLHostStatusBar.h"

#include "PLAppContext.h"
#include "PLClock.h"
#include "PLDrawContext.h"
#include "PLEventLoop.h"
#include "PLHostStatusLabel.h"
#include "PLTime.h"
#include "PLTimeStamp.h"
#include "PLTypes.h"

#if PL_HOST_HAVE_SYSTEM_SETTINGS
#include PL_HOST_SYSTEM_SETTINGS_HEADER
#endif

namespace {

constexpr int64_t kMinuteMs = 60 * 1000;

// The battery mark: a frame with a nub and a fill, at the right end of the area.
constexpr PLRect kBatteryFrame{16, 206, 30, 230};
constexpr PLRect kBatteryNub{20, 230, 26, 233};
constexpr PLRect kBatteryFill{18, 208, 28, 225};

}  // namespace

PLHostStatusBar::PLHostStatusBar()
    : PLPane(kID, PLPoint(0, 0), PLSize(kPLStatusHeight, kPLScreenWidth)),
      mTime(new PLHostStatusLabel(kTimeID, PLPoint(0, 6), PLSize(kPLStatusHeight, 104),
                                  PLFourCC("UC24"), kPLJustifyLeft)),
      mDate(new PLHostStatusLabel(kDateID, PLPoint(0, 110), PLSize(kPLStatusHeight, 90),
                                  PLFourCC("UC16"), kPLJustifyRight)) {
    AddSubPane(mTime, false);
    AddSubPane(mDate, false);
    Refresh();
}

PLHostStatusBar::~PLHostStatusBar() {
    if (mTimer != 0) {
        PLAppContext::GetInstance()->GetEventLoop().CancelTimer(mTimer);
    }
}

long PLHostStatusBar::TimeFormat() {
    long format = kPLTimeFormat12;
#if PL_HOST_HAVE_SYSTEM_SETTINGS
    long fromSettings = format;
    if (APConfigSystem_GetTimeFormat(&fromSettings) & 0xFF) {
        format = fromSettings;
    }
#endif
    return format;
}

long PLHostStatusBar::DateFormat() {
    long format = 0;
#if PL_HOST_HAVE_SYSTEM_SETTINGS
    long fromSettings = format;
    if (APConfigSystem_GetDateFormat(&fromSettings) & 0xFF) {
        format = fromSettings;
    }
#endif
    return format;
}

void PLHostStatusBar::Refresh() {
    PLDate date;
    PLTime time;
    TimeStamp2PLDate(long(PLClock::Now()), &date, &time);
    mTime->SetString(PLTime::GetStr(time, TimeFormat()));
    mDate->SetString(PLDate2PLString(date, DateFormat()));
    Schedule();
}

void PLHostStatusBar::Schedule() {
    PLEventLoop& loop = PLAppContext::GetInstance()->GetEventLoop();
    if (mTimer != 0) {
        loop.CancelTimer(mTimer);
    }
    int64_t now = PLClock::NowMs();
    int64_t intoMinute = ((now % kMinuteMs) + kMinuteMs) % kMinuteMs;
    mTimer = loop.AddTimer(kMinuteMs - intoMinute, [this] {
        mTimer = 0;
        Refresh();
    });
}

void PLHostStatusBar::Draw(PLDrawContext& context) {
    context.FillRect(GetBounds(), kBackColor);
    context.FrameRect(kBatteryFrame, kTextColor);
    context.FillRect(kBatteryNub, kTextColor);
    context.FillRect(kBatteryFill, kBatteryColor);
}
