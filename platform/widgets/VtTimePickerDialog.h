// A time picker: hour and minute spinners (up and down arrows), and in the 12-hour form an AM/PM
// switch. The caller reads the result after ModalDialog: in the 12-hour form GetHour gives 1..12
// with GetSuffix "AM" or "PM" (Is12Hour is 1); in the 24-hour form 0..23. GetHour24 converts.
// Keys: left/right move between the columns, up/down change the focused one, ok accepts.
#pragma once

#include "VtBaseDialog.h"

// Modes: hour and minute, or the hour alone (the minute shows 00).
constexpr long kVtTimeHourMinute = 1;
constexpr long kVtTimeHourOnly = 2;

class VtTimePickerDialog : public VtBaseDialog {
public:
    VtTimePickerDialog(uint32_t id, long hour, long minute, long format,
                       const PLBasicString<char>& title, long mode);

    // 1 in the 12-hour form, 0 in the 24-hour form.
    long Is12Hour() const { return mTwelve ? 1 : 0; }
    // 1..12 in the 12-hour form, 0..23 in the 24-hour form.
    long GetHour() const;
    long GetMinute() const { return mMinute; }
    // "AM" or "PM" (also in the 24-hour form, by the hour).
    PLBasicString<char> GetSuffix() const;
    long GetHour24() const { return mHour; }
    long GetMode() const { return mMode; }

    // Column steps, as the arrows do: column 0 hour, 1 minute, 2 AM/PM.
    void StepColumn(int column, int delta);
    // What a column shows: the hour, the minute, or the platform's label for the half of the day.
    PLBasicString<char> ColumnText(int column) const;

    void MouseDown(PLPoint where, PLMouseButton button) override;
    void MouseUp(PLPoint where, PLMouseButton button) override;
    const char* GetClassName() const override { return "VtTimePickerDialog"; }

protected:
    void DrawContent(PLDrawContext& context, const PLRect& area) override;
    bool HandleKey(uint8_t key) override;

private:
    int ColumnCount() const { return mTwelve ? 3 : 2; }
    PLRect ColumnRect(int column) const;
    // -1 up arrow, +1 down arrow, 0 the value, with the column; false when outside.
    bool HitAt(PLPoint local, int& column, int& part) const;

    long mHour;  // 0..23
    long mMinute;
    bool mTwelve;
    long mMode;
    int mFocus = 0;
    int mPressedColumn = -1;
    int mPressedPart = 0;
};
