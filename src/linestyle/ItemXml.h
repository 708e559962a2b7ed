#pragma once
// Elements the XML forms of line types and point symbols write alike: a number as element
// data, and the text records of an item array as <prefix><index> elements.
#include "linestyle/IndexedName.h"
#include "linestyle/RecordSource.h"
#include "markup/Markup.h"

namespace vantrel1 {

inline void AddNumberElem(CMarkup& xml, const WCHAR* name, int value) {
  xml.AddElem(name, DecimalText(value).c_str());
}

// A record that does not fit the buffer is written as an empty element; reading it back
// leaves that item at its defaults, as a missing element would.
template <typename Item>
void AddItemElems(CMarkup& xml, const WCHAR* prefix, Item* items, int count) {
  for (int i = 0; i < count; ++i) {
    RecordBuffer record;
    const WCHAR* text = items[i].ToAscii(record, kRecordSize);
    xml.AddElem(IndexedName(prefix, i).c_str(), text != nullptr ? text : u"");
  }
}

}  // namespace vantrel1
