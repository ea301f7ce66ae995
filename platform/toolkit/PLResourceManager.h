// Something that answers resource lookups by type, id and selector.
#pragma once

#include <cstdint>

#include "PLBasicString.h"

class PLResourceManager {
public:
    explicit PLResourceManager(uint32_t id) : mID(id) {}
    virtual ~PLResourceManager() = default;
    uint32_t GetID() const { return mID; }

    // The resource (a PLBitmap, PLBitmapFamily or a NUL-terminated UTF-8 text), or null. The
    // selector '????' matches any.
    virtual const void* GetResource(uint32_t type, uint32_t id, uint32_t selector) const = 0;
    virtual bool GetText(uint32_t id, PLBasicString<char>& text) const = 0;

private:
    uint32_t mID;
};
