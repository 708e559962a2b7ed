#pragma once
// CMarkup's memory of long child lists searched by name. A table is read one entry at a
// time, each looked up by its name from the first child ("USER0", "USER1", ...), which
// would walk every earlier sibling again for every entry. Once a search from the first
// child has walked far, the children of that element are recorded as later searches walk
// them: for each tag name, the first child that carries it. A search then looks its name
// up instead of walking. Any edit or new document forgets everything.
#include <string_view>
#include <unordered_map>
#include <utility>

#include "markup/Markup.h"

struct CMarkup::NameLookup {
  // A search from the first child that walks this many siblings starts a record.
  static constexpr int kWalkBeforeRecording = 128;

  struct Children {
    int parent = -1;  // whose children are recorded; -1 when the slot is unused
    int next = 0;     // the first child not recorded yet, 0 when all are
    int count = 0;    // children recorded so far
    unsigned lastUse = 0;
    // Tag name -> the first child with that name and its position among the children.
    std::unordered_map<std::u16string_view, std::pair<int, int>> first;
  };

  // Two elements at a time: a table and the entry being read from it.
  Children slots[2];
  unsigned clock = 0;

  void Forget() {
    for (Children& slot : slots) slot.parent = -1;
  }

  Children* Find(int parent) {
    for (Children& slot : slots) {
      if (slot.parent != parent) continue;
      slot.lastUse = ++clock;
      return &slot;
    }
    return nullptr;
  }

  Children& Start(int parent, int firstChild) {
    Children& slot = slots[0].parent < 0                ? slots[0]
                     : slots[1].parent < 0              ? slots[1]
                     : slots[0].lastUse <= slots[1].lastUse ? slots[0]
                                                        : slots[1];
    slot.parent = parent;
    slot.next = firstChild;
    slot.count = 0;
    slot.lastUse = ++clock;
    slot.first.clear();
    return slot;
  }
};
