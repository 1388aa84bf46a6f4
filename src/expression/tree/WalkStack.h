// The stack of a walk over a tree. Trees may be a million levels deep, so no walk recurses: each keeps its place in one
// of these, which needs no heap for trees of ordinary depth.

#pragma once

#include <cstddef>
#include <vector>

namespace reka {

/// A stack whose first entries lie in the object itself. `Entry` is a plain record. A reference from `Top` is good
/// until the next `Push` or `Pop`.
template <class Entry, std::size_t localCapacity = 64>
class CWalkStack {
public:
    CWalkStack() = default;
    CWalkStack(const CWalkStack&) = delete;
    CWalkStack& operator=(const CWalkStack&) = delete;

    bool IsEmpty() const { return count == 0; }
    Entry& Top() { return count <= localCapacity ? local[count - 1] : beyond.back(); }
    void Push(const Entry& entry) {
        if (count < localCapacity) {
            local[count] = entry;
        } else {
            beyond.push_back(entry);
        }
        ++count;
    }
    void Pop() {
        if (count > localCapacity) beyond.pop_back();
        --count;
    }

private:
    std::size_t count = 0;
    Entry local[localCapacity];
    std::vector<Entry> beyond;  // the entries above the local ones
};

}  // namespace reka
