// Supplies the rows of a list on request, for lists that are filled by their owner's data rather
// than row by row (VtListView::Reload asks it).
#pragma once

#include <cstddef>

class VtListRow;

class VtListDataProvider {
public:
    virtual ~VtListDataProvider() = default;
    virtual size_t GetRowCount() const = 0;
    // A new row for the 1-based index; the list owns it.
    virtual VtListRow* MakeRow(size_t index) = 0;
};
