#include "platform/GlobalMemory.h"

#include <memory>
#include <new>
#include <unordered_map>
#include <vector>

namespace vantrel1 {
namespace {

struct GlobalBlock {
  std::vector<BYTE> bytes;
  int locks = 0;
};

// Live blocks by handle. The handle is the block's own address, so it stays the same for
// the block's life; the map is only consulted to refuse handles that are not live.
using BlockMap = std::unordered_map<HGLOBAL, std::unique_ptr<GlobalBlock>>;

BlockMap& Blocks() {
  static BlockMap blocks;
  return blocks;
}

GlobalBlock* Find(HGLOBAL handle) {
  if (!handle) return nullptr;
  const auto it = Blocks().find(handle);
  return it == Blocks().end() ? nullptr : it->second.get();
}

}  // namespace
}  // namespace vantrel1

using vantrel1::Find;

HGLOBAL GlobalAlloc(UINT /*flags*/, std::size_t bytes) {
  if (bytes > vantrel1::kMaxGlobalBlockBytes) return nullptr;
  try {
    auto block = std::make_unique<vantrel1::GlobalBlock>();
    block->bytes.assign(bytes, 0);
    HGLOBAL handle = block.get();
    vantrel1::Blocks().emplace(handle, std::move(block));
    return handle;
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

void* GlobalLock(HGLOBAL handle) {
  vantrel1::GlobalBlock* block = Find(handle);
  if (!block || block->bytes.empty()) return nullptr;
  ++block->locks;
  return block->bytes.data();
}

BOOL GlobalUnlock(HGLOBAL handle) {
  vantrel1::GlobalBlock* block = Find(handle);
  if (!block || block->locks == 0) return FALSE;
  --block->locks;
  return block->locks > 0 ? TRUE : FALSE;
}

HGLOBAL GlobalFree(HGLOBAL handle) {
  if (!Find(handle)) return handle;
  vantrel1::Blocks().erase(handle);
  return nullptr;
}

std::size_t GlobalSize(HGLOBAL handle) {
  const vantrel1::GlobalBlock* block = Find(handle);
  return block ? block->bytes.size() : 0;
}

UINT GlobalFlags(HGLOBAL handle) {
  const vantrel1::GlobalBlock* block = Find(handle);
  return block ? static_cast<UINT>(block->locks) & GMEM_LOCKCOUNT : GMEM_INVALID_HANDLE;
}
