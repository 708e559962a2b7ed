#include "platform/MemoryClipboardBackend.h"

bool CMemoryClipboardBackend::Empty() {
  m_formats.clear();
  return true;
}

bool CMemoryClipboardBackend::IsFormatAvailable(UINT format) { return m_formats.count(format) != 0; }

bool CMemoryClipboardBackend::GetData(UINT format, std::vector<BYTE>& data) {
  const auto it = m_formats.find(format);
  if (it == m_formats.end()) return false;
  data = it->second;
  return true;
}

bool CMemoryClipboardBackend::SetData(UINT format, const std::vector<BYTE>& data) {
  m_formats[format] = data;
  return true;
}

std::vector<UINT> CMemoryClipboardBackend::Formats() const {
  std::vector<UINT> formats;
  for (const auto& entry : m_formats) formats.push_back(entry.first);
  return formats;
}
