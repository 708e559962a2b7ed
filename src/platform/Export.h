#pragma once
// Both libraries are built with hidden visibility; what callers may use is marked, as the
// suite's Windows DLLs export their classes and functions.
#define VANTREL1_EXPORT __attribute__((visibility("default")))
#define VANTREL1_QT_EXPORT __attribute__((visibility("default")))
