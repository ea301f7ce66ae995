// The state of a list apart from its looks: how many rows, which are checked, which has the
// focus. Indexes are 1-based as everywhere in the platform; 0 and indexes past the end name no row
// and change nothing.
//
// Check modes: 1 keeps at most one row checked (checking one unchecks the others), 2 lets any
// number of rows be checked; any other mode checks nothing.
#pragma once

#include <cstddef>
#include <vector>

constexpr long kVtCheckNone = 0;
constexpr long kVtCheckOne = 1;
constexpr long kVtCheckMany = 2;

class VtListModel {
public:
    explicit VtListModel(long checkMode) : mMode(checkMode) {}

    long GetCheckMode() const { return mMode; }
    size_t GetCount() const { return mChecked.size(); }
    bool IsValid(size_t index) const { return index >= 1 && index <= mChecked.size(); }

    void Append();
    // Removes every row; the focus goes to none.
    void Clear();

    // Each returns true when the set of checked rows changed.
    bool Check(size_t index);
    bool UnCheck(size_t index);
    // A user's choice of a row: mode 1 checks it, mode 2 flips it.
    bool Choose(size_t index);
    bool IsChecked(size_t index) const;
    // The checked rows, ascending.
    std::vector<size_t> GetChecked() const;

    size_t GetFocus() const { return mFocus; }
    // Returns true when the focus moved; an invalid index leaves it.
    bool SetFocus(size_t index);
    // Moves the focus by `delta` rows, stopping at the ends or wrapping round with `wrap`. With no
    // focus yet, a move forward focuses the first row and a move back the last. Returns true when
    // the focus moved.
    bool MoveFocus(int delta, bool wrap);

private:
    long mMode;
    std::vector<bool> mChecked;
    size_t mFocus = 0;
};
