#include "util/Win32Error.h"

#include <gtest/gtest.h>

#include <cerrno>

// The codes callers on Windows already handle, as Windows numbers them.
TEST(Win32Error, CommonErrnoValuesGetTheirWindowsCodes) {
  const struct {
    int error;
    DWORD code;
  } cases[] = {{0, 0},       {ENOENT, 2},        {ENOTDIR, 3}, {EMFILE, 4}, {EACCES, 5},
               {EISDIR, 5},  {ENOMEM, 8},        {EWOULDBLOCK, 32},         {ENAMETOOLONG, 206},
               {EPIPE, 31}};  // no counterpart: the general failure
  for (const auto& c : cases) EXPECT_EQ(vantrel1::Win32ErrorFromErrno(c.error), c.code) << "errno " << c.error;
}
