// One picture per state of a control: normal, pressed, disabled (and selected). The family does not
// own its bitmaps unless told to.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

class PLBitmap;

enum PLBitmapState : int {
    kPLBitmapNormal = 0,
    kPLBitmapPressed = 1,
    kPLBitmapDisabled = 2,
    kPLBitmapSelected = 3,
    kPLBitmapStateCount = 4,
};

class PLBitmapFamily {
public:
    explicit PLBitmapFamily(uint32_t selector = 0x3F3F3F3F, bool ownsBitmaps = false);
    ~PLBitmapFamily();
    PLBitmapFamily(const PLBitmapFamily&) = delete;
    PLBitmapFamily& operator=(const PLBitmapFamily&) = delete;

    uint32_t GetSelector() const { return mSelector; }
    void SetAllBitmaps(PLBitmap* bitmap);
    void SetBitmap(PLBitmapState state, PLBitmap* bitmap);
    // The bitmap of a state, falling back to the normal one; may be null.
    PLBitmap* GetBitmap(PLBitmapState state) const;

private:
    // Empties a slot, deleting an owned bitmap that no other slot uses.
    void Release(size_t index);

    uint32_t mSelector;
    bool mOwnsBitmaps;
    std::array<PLBitmap*, kPLBitmapStateCount> mBitmaps{};
};
