// The date header of a main view (the top 29 pixels): the shown period between two arrows on the
// theme's band. Type 11 shows month and year ("March 2026") and its arrows move the shared date by
// a month; type 13 shows a day ("Sat 21 Mar 2026", the longest form that fits) and its arrows move
// it by a day. Without the platform texts the titles are numeric ("2026-03", "2026-03-21"). The
// date stays within 1970-01-01..2030-12-31.
//
// Messages (sender = the control's id): "msup" with value 1 after the left arrow moved the date,
// 2 after the right arrow moved it, 3 when the title was tapped (the owner opens its date dialog).
// An arrow that cannot move (at the range's end) sends nothing.
#pragma once

#include "PLControl.h"

struct PLDate;

constexpr long kVtHeaderMonth = 11;
constexpr long kVtHeaderDay = 13;
constexpr long kVtHeaderMovedBack = 1;
constexpr long kVtHeaderMovedOn = 2;
constexpr long kVtHeaderTitle = 3;

class VtCalendarYearSelectControl : public PLControl {
public:
    VtCalendarYearSelectControl(uint32_t id, long type, PLDate* date, bool wrapAtLimits);

    long GetType() const { return mType; }
    PLDate* GetDate() const { return mDate; }
    // The title for the current date: named when the platform texts are installed.
    PLBasicString<char> TitleText() const;
    // Moves as the arrows do; returns true when the date moved (and sends the message).
    bool Step(int direction);

    void Draw(PLDrawContext& context) override;
    void MouseDown(PLPoint where, PLMouseButton button) override;
    void MouseMove(PLPoint where, PLMouseButton button) override;
    void MouseUp(PLPoint where, PLMouseButton button) override;
    const char* GetClassName() const override { return "VtCalendarYearSelectControl"; }

    static constexpr int kArrowWidth = 44;
    // Room kept free on each side of the title so that it never touches an arrow's area.
    static constexpr int kTitleMargin = 2;

private:
    enum class Part { None, Left, Title, Right };
    Part PartAt(PLPoint local) const;
    void Send(long value);

    long mType;
    PLDate* mDate;  // the shared date, not owned
    bool mWrap;
    Part mPressed = Part::None;
};
