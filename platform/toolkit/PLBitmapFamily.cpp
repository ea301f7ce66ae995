// A control's pictures per state, with the normal picture standing in for missing ones.
#include "PLBitmapFamily.h"

#include <algorithm>

#include "PLBitmap.h"

PLBitmapFamily::PLBitmapFamily(uint32_t selector, bool ownsBitmaps)
    : mSelector(selector), mOwnsBitmaps(ownsBitmaps) {}

PLBitmapFamily::~PLBitmapFamily() {
    for (size_t i = 0; i < mBitmaps.size(); ++i) {
        Release(i);
    }
}

void PLBitmapFamily::SetAllBitmaps(PLBitmap* bitmap) {
    for (size_t i = 0; i < mBitmaps.size(); ++i) {
        SetBitmap(static_cast<PLBitmapState>(i), bitmap);
    }
}

void PLBitmapFamily::SetBitmap(PLBitmapState state, PLBitmap* bitmap) {
    if (state < 0 || state >= kPLBitmapStateCount) {
        return;
    }
    const size_t index = static_cast<size_t>(state);
    if (mBitmaps[index] == bitmap) {
        return;
    }
    Release(index);
    mBitmaps[index] = bitmap;
}

PLBitmap* PLBitmapFamily::GetBitmap(PLBitmapState state) const {
    if (state < 0 || state >= kPLBitmapStateCount) {
        return mBitmaps[kPLBitmapNormal];
    }
    PLBitmap* bitmap = mBitmaps[static_cast<size_t>(state)];
    return bitmap != nullptr ? bitmap : mBitmaps[kPLBitmapNormal];
}

void PLBitmapFamily::Release(size_t index) {
    PLBitmap* old = mBitmaps[index];
    mBitmaps[index] = nullptr;
    // One picture may serve several states; it is deleted when its last state lets go.
    if (mOwnsBitmaps && old != nullptr &&
        std::find(mBitmaps.begin(), mBitmaps.end(), old) == mBitmaps.end()) {
        delete old;
    }
}
