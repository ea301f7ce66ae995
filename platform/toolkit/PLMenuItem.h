// One entry of a menu: a label, a command id (or value), an enabled state.
#pragma once

#include <cstdint>

#include "PLBasicString.h"

class PLMenuItem {
public:
    PLMenuItem(const PLBasicString<char>& label, uint32_t id) : mLabel(label), mID(id) {}
    virtual ~PLMenuItem() = default;

    const PLBasicString<char>& GetLabel() const { return mLabel; }
    void SetLabel(const PLBasicString<char>& label) { mLabel = label; }
    uint32_t GetID() const { return mID; }
    bool IsEnabled() const { return mEnabled; }
    void SetEnabled(bool enabled) { mEnabled = enabled; }

private:
    PLBasicString<char> mLabel;
    uint32_t mID;
    bool mEnabled = true;
};
