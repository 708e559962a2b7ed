#include "platform/Version.h"

#include <gtest/gtest.h>

#include <string>

#include "vantrel1/Version.h"

TEST(Version, LibraryReportsTheVersionItWasBuiltAs) {
  EXPECT_EQ(std::string(Vantrel1Version()), VANTREL1_VERSION);
}
