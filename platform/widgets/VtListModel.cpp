// List state: checked rows by check mode and the focus.
#include "VtListModel.h"

void VtListModel::Append() {
    mChecked.push_back(false);
}

void VtListModel::Clear() {
    mChecked.clear();
    mFocus = 0;
}

bool VtListModel::Check(size_t index) {
    if (!IsValid(index) || (mMode != kVtCheckOne && mMode != kVtCheckMany)) {
        return false;
    }
    bool changed = !mChecked[index - 1];
    if (mMode == kVtCheckOne) {
        // One row at a time: every other row goes off.
        for (size_t i = 0; i < mChecked.size(); ++i) {
            if (i != index - 1 && mChecked[i]) {
                mChecked[i] = false;
                changed = true;
            }
        }
    }
    mChecked[index - 1] = true;
    return changed;
}

bool VtListModel::UnCheck(size_t index) {
    if (!IsValid(index) || !mChecked[index - 1]) {
        return false;
    }
    mChecked[index - 1] = false;
    return true;
}

bool VtListModel::Choose(size_t index) {
    if (mMode == kVtCheckMany && IsChecked(index)) {
        return UnCheck(index);
    }
    return Check(index);
}

bool VtListModel::IsChecked(size_t index) const {
    return IsValid(index) && mChecked[index - 1];
}

std::vector<size_t> VtListModel::GetChecked() const {
    std::vector<size_t> checked;
    for (size_t i = 0; i < mChecked.size(); ++i) {
        if (mChecked[i]) {
            checked.push_back(i + 1);
        }
    }
    return checked;
}

bool VtListModel::SetFocus(size_t index) {
    if (!IsValid(index) || index == mFocus) {
        return false;
    }
    mFocus = index;
    return true;
}

bool VtListModel::MoveFocus(int delta, bool wrap) {
    const long count = static_cast<long>(mChecked.size());
    if (count == 0 || delta == 0) {
        return false;
    }
    long target = 0;
    if (mFocus == 0) {
        target = delta > 0 ? 1 : count;
    } else {
        target = static_cast<long>(mFocus) + delta;
        if (wrap) {
            target = ((target - 1) % count + count) % count + 1;
        } else {
            target = target < 1 ? 1 : (target > count ? count : target);
        }
    }
    return SetFocus(static_cast<size_t>(target));
}
