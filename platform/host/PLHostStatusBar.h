// The status area that the platform shows above every application: the top 45 pixels of the
// screen with the time and the date from the platform clock and a battery mark. It redraws itself
// when the minute changes, with a timer of the event loop.
//
// The time and the date follow the system's formats when the settings service offers them
// (24-hour for time format 2; dates as PLDate2PLString writes them), else "9:41 AM" and
// "2026-11-21".
#pragma once

#include <cstdint>

#include "PLPane.h"
#include "PLRGBColor.h"

class PLHostStatusLabel;

class PLHostStatusBar : public PLPane {
public:
    // Pane ids, for scripts and dumps.
    static constexpr uint32_t kID = 9000;
    static constexpr uint32_t kTimeID = 9001;
    static constexpr uint32_t kDateID = 9002;
    static constexpr PLRGBColor kBackColor{28, 36, 48};
    static constexpr PLRGBColor kTextColor{236, 240, 245};
    static constexpr PLRGBColor kBatteryColor{120, 200, 140};

    PLHostStatusBar();
    ~PLHostStatusBar() override;

    // Reads the clock again, updates the texts and arms the timer for the next minute; the
    // simulator calls it when the clock was set.
    void Refresh();
    void Draw(PLDrawContext& context) override;
    const char* GetClassName() const override { return "PLHostStatusBar"; }

private:
    void Schedule();
    static long TimeFormat();
    static long DateFormat();

    PLHostStatusLabel* mTime;
    PLHostStatusLabel* mDate;
    uint32_t mTimer = 0;
};
