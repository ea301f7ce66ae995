// The toolkit's vector: an ordered, growable array with 0-based indexes.
#pragma once

#include <cstddef>
#include <vector>

template <class T>
class PLVector {
public:
    PLVector() = default;

    size_t GetCount() const { return mItems.size(); }
    bool IsEmpty() const { return mItems.empty(); }
    void Append(const T& item) { mItems.push_back(item); }
    void Insert(size_t index, const T& item) {
        mItems.insert(mItems.begin() + static_cast<std::ptrdiff_t>(
                                           index <= mItems.size() ? index : mItems.size()),
                      item);
    }
    void RemoveAt(size_t index) {
        if (index < mItems.size()) {
            mItems.erase(mItems.begin() + static_cast<std::ptrdiff_t>(index));
        }
    }
    void Clear() { mItems.clear(); }
    T& operator[](size_t i) { return mItems.at(i); }
    const T& operator[](size_t i) const { return mItems.at(i); }

    auto begin() { return mItems.begin(); }
    auto end() { return mItems.end(); }
    auto begin() const { return mItems.begin(); }
    auto end() const { return mItems.end(); }

private:
    std::vector<T> mItems;
};
