#pragma once
// A clipboard kept in the process: what tests and programs without a desktop use. Every
// format number is accepted, registered or not.
#include <map>
#include <vector>

#include "platform/Clipboard.h"

class VANTREL1_EXPORT CMemoryClipboardBackend : public CClipboardBackend {
 public:
  bool Open() override { return true; }
  void Close() override {}
  bool Empty() override;
  bool IsFormatAvailable(UINT format) override;
  bool GetData(UINT format, std::vector<BYTE>& data) override;
  bool SetData(UINT format, const std::vector<BYTE>& data) override;

  // The formats held, in ascending order.
  std::vector<UINT> Formats() const;

 private:
  std::map<UINT, std::vector<BYTE>> m_formats;
};
