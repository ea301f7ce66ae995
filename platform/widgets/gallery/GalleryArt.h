// Pictures the gallery draws for itself (it has no resource file): a bitmap family for buttons
// and a small icon for list rows.
#pragma once

#include <memory>

class PLBitmap;
class PLBitmapFamily;

class GalleryArt {
public:
    GalleryArt();
    ~GalleryArt();

    PLBitmapFamily* ButtonFamily() const { return mFamily.get(); }
    PLBitmap* RowIcon() const { return mIcon.get(); }
    PLBitmap* NoticeIcon() const { return mNotice.get(); }

private:
    std::unique_ptr<PLBitmapFamily> mFamily;
    std::unique_ptr<PLBitmap> mIcon;
    std::unique_ptr<PLBitmap> mNotice;
};
