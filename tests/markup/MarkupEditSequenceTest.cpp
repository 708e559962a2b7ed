#include <gtest/gtest.h>

#include <random>

#include "markup/MarkupProbe.h"

using markup_probe::ApplyRandomEdit;
using markup_probe::IndexMismatch;
using markup_probe::Narrow;

namespace {

// Starting points, including text that only just parses and text that does not.
const char16_t* const kStarts[] = {
    u"",
    u"   ",
    u"plain text",
    u"<?xml version=\"1.0\"?>\r\n<!-- c -->\r\n",
    u"<r/>",
    u"<r></r>",
    u"<r>\r\n<a x='1'>t</a>\r\n<b/>\r\n</r>\r\n",
    u"<?xml?><!DOCTYPE r [ <!ENTITY e 'v'> ]><r a=\"&lt;\"><a><b/></a> text <c></c></r> tail",
    u"<r><p//><q /><s a=\">\"/></s><=/><a[1]></a></r>",
    u"<r><![CDATA[<x>]]><!-- <y> --><?p?></r>",
    u"<r><a>",
    u"</r>",
};

}  // namespace

// Every edit keeps the index equal to a fresh parse of the edited text.
TEST(MarkupEditSequence, IndexMatchesAFreshParseAfterEveryEdit) {
  for (unsigned seed = 1; seed <= 40; ++seed) {
    for (const char16_t* start : kStarts) {
      std::mt19937 random(seed);
      const auto pick = [&random](unsigned n) {
        return static_cast<unsigned>(random() % n);
      };
      MarkupProbe m;
      m.SetDoc(start);
      for (int step = 0; step < 60; ++step) {
        ApplyRandomEdit(m, pick);
        const std::string mismatch = IndexMismatch(m);
        ASSERT_EQ(mismatch, "") << "seed " << seed << ", step " << step << ", start "
                                << Narrow(start) << "\n" << Narrow(m.GetDoc());
      }
    }
  }
}
