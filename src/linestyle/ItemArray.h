#pragma once
// The item arrays of line types and symbols: a pointer, a public count that callers may
// set to anything, and a capacity. These helpers never reach past the capacity, whatever
// the count says.
#include <algorithm>

namespace vantrel1 {

// Items that can be touched without leaving the array.
inline int InUse(int count, int capacity) { return std::clamp(count, 0, std::max(capacity, 0)); }

// Removes item `index` (an index past the end removes the last one), clearing the slot it
// leaves; the new count, -1 for an empty array, -2 for a negative index.
template <typename T>
int DeleteItem(T* items, int& count, int capacity, int index) {
  if (count < 1) return -1;
  if (index < 0) return -2;
  const int used = InUse(count, capacity);
  if (used < 1) return -1;
  for (int i = index; i + 1 < used; ++i) items[i] = items[i + 1];
  items[used - 1].Init();
  count = used - 1;
  return count;
}

template <typename T>
T* ItemAt(T* items, int count, int capacity, int index) {
  return index >= 0 && index < InUse(count, capacity) ? &items[index] : nullptr;
}

}  // namespace vantrel1
