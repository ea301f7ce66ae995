// Pictures the gallery draws for itself (it has no resource file): bitmap families for buttons,
// in the sizes the calendar's header cells, day buttons and hour labels have, and icons for list
// rows and notices.
#pragma once

#include <memory>
#include <vector>

class PLBitmap;
class PLBitmapFamily;

class GalleryArt {
public:
    GalleryArt();
    ~GalleryArt();

    PLBitmapFamily* ButtonFamily() const { return mFamily.get(); }
    // Dark header cells 26 wide: 24 high for weekday names, 21 for day numbers.
    PLBitmapFamily* NameCellFamily() const { return mFamilies[0].get(); }
    PLBitmapFamily* NumberCellFamily() const { return mFamilies[1].get(); }
    // Light 26-by-26 day buttons (pressed in: blue frame) and 42-by-24 hour labels.
    PLBitmapFamily* DayButtonFamily() const { return mFamilies[2].get(); }
    PLBitmapFamily* HourLabelFamily() const { return mFamilies[3].get(); }
    PLBitmap* RowIcon() const { return mIcon.get(); }
    PLBitmap* NoticeIcon() const { return mNotice.get(); }

private:
    std::unique_ptr<PLBitmapFamily> mFamily;
    std::vector<std::unique_ptr<PLBitmapFamily>> mFamilies;
    std::unique_ptr<PLBitmap> mIcon;
    std::unique_ptr<PLBitmap> mNotice;
};
