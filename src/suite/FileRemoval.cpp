#include "suite/FileRemoval.h"

#include <filesystem>
#include <system_error>

#include "platform/Utf.h"

namespace vantrel1 {

void RemoveFileIfPresent(const WCHAR* path) {
  if (path == nullptr) return;
  std::error_code ignored;
  std::filesystem::remove(std::filesystem::path(ToUtf8(path)), ignored);
}

}  // namespace vantrel1
