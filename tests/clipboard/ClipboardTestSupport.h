#pragma once
// A clipboard of the test's own: an in-memory backend installed for the test's lifetime,
// with switches to make the window system refuse what a test needs refused. Whatever the
// test leaves open is closed when it ends, so one failing test does not lock the
// clipboard for the rest.
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "platform/Clipboard.h"
#include "platform/MemoryClipboardBackend.h"

class CTestClipboardBackend : public CMemoryClipboardBackend {
 public:
  CTestClipboardBackend() : m_previous(SetClipboardBackend(this)) {}
  ~CTestClipboardBackend() override {
    CloseClipboard();
    SetClipboardBackend(m_previous);
  }
  CTestClipboardBackend(const CTestClipboardBackend&) = delete;
  CTestClipboardBackend& operator=(const CTestClipboardBackend&) = delete;

  UINT RegisterFormat(const CStdStrW& name) override {
    ++registrations;
    return refuseRegistration ? 0 : CMemoryClipboardBackend::RegisterFormat(name);
  }
  bool SetData(UINT format, const std::vector<BYTE>& data) override {
    ownerWhenSet = GetOpenClipboardWindow();
    return !refuseData && CMemoryClipboardBackend::SetData(format, data);
  }

  // The bytes held under `format`, empty when absent.
  std::vector<BYTE> Bytes(UINT format) {
    std::vector<BYTE> data;
    GetData(format, data);
    return data;
  }
  // Puts bytes directly, as another program would.
  void Put(UINT format, const std::vector<BYTE>& data) { CMemoryClipboardBackend::SetData(format, data); }
  void PutText(UINT format, const std::u16string& text) {
    std::vector<BYTE> data((text.size() + 1) * 2, 0);
    std::memcpy(data.data(), text.c_str(), data.size());
    Put(format, data);
  }

  int registrations = 0;
  bool refuseRegistration = false;
  bool refuseData = false;
  HWND ownerWhenSet = nullptr;

 private:
  CClipboardBackend* m_previous;
};

// Handles that name windows in tests; no window stands behind them.
inline HWND TestWindow(std::uintptr_t n) { return reinterpret_cast<HWND>(n); }

// The UTF-16 little-endian bytes of a text followed by one zero unit.
inline std::vector<BYTE> TextBytes(const std::u16string& text) {
  std::vector<BYTE> bytes;
  for (char16_t c : text) {
    bytes.push_back(static_cast<BYTE>(c & 0xFF));
    bytes.push_back(static_cast<BYTE>(c >> 8));
  }
  bytes.push_back(0);
  bytes.push_back(0);
  return bytes;
}
