#pragma once
// Reading a latitude and longitude typed by a person or written by CLatLonptBaseX.
#include <string_view>

namespace vantrel1 {

// The latitude and longitude in signed decimal degrees; false when the text is not
// exactly one point. The range of the values is the caller's to check.
bool ParseLatLon(std::u16string_view text, double* latitude, double* longitude);

}  // namespace vantrel1
