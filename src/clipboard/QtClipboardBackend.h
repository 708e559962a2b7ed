#pragma once
// CQtClipboardBackend: the desktop's clipboard through QClipboard, for GUI programs.
// Install it with SetClipboardBackend once the QGuiApplication exists; without one the
// clipboard cannot be opened.
//
// Each named format travels as a MIME type of its own, so that every program of the suite
// finds it by its name: "Vantrel Lat Lon" becomes
//   application/x-qt-windows-mime;value="Vantrel Lat Lon"
// which is also the form in which Qt on Windows names a registered clipboard format. The
// bytes are the block as it was put, terminating zero included. CF_UNICODETEXT is the
// desktop's plain text. Other standard formats are not carried.
//
// Data put between an open and a close are gathered and published together on close, so
// that a transfer of several formats replaces the clipboard's content once. Putting data
// without emptying first adds them to what the clipboard holds.
#include <memory>
#include <vector>

#include <QClipboard>
#include <QString>

#include "platform/Clipboard.h"
#include "platform/Export.h"

class QMimeData;

class VANTREL1_QT_EXPORT CQtClipboardBackend : public CClipboardBackend {
 public:
  explicit CQtClipboardBackend(QClipboard::Mode mode = QClipboard::Clipboard);
  ~CQtClipboardBackend() override;
  CQtClipboardBackend(const CQtClipboardBackend&) = delete;
  CQtClipboardBackend& operator=(const CQtClipboardBackend&) = delete;

  bool Open() override;
  void Close() override;
  bool Empty() override;
  bool IsFormatAvailable(UINT format) override;
  bool GetData(UINT format, std::vector<BYTE>& data) override;
  bool SetData(UINT format, const std::vector<BYTE>& data) override;

  // The MIME type of a registered format; empty for any other number.
  static QString MimeTypeOf(UINT format);

 private:
  const QMimeData* Content() const;

  QClipboard::Mode m_mode;
  std::unique_ptr<QMimeData> m_pending;  // gathered since the clipboard was emptied or first written
};
