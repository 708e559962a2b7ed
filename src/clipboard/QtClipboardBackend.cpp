#include "clipboard/QtClipboardBackend.h"

#include <cstring>

#include <QByteArray>
#include <QGuiApplication>
#include <QMimeData>
#include <QStringList>

namespace {

QClipboard* SystemClipboard() {
  return qobject_cast<QGuiApplication*>(QCoreApplication::instance()) ? QGuiApplication::clipboard() : nullptr;
}

// Plain text from the block: the units up to the first zero, or to the end without one.
QString TextOf(const std::vector<BYTE>& data) {
  QString text(static_cast<qsizetype>(data.size() / sizeof(char16_t)), QChar(0));
  if (text.isEmpty()) return text;
  std::memcpy(text.data(), data.data(), static_cast<std::size_t>(text.size()) * sizeof(char16_t));
  const qsizetype end = text.indexOf(QChar(0));
  return end < 0 ? text : text.left(end);
}

std::vector<BYTE> BlockOf(const QString& text) {
  std::vector<BYTE> data((static_cast<std::size_t>(text.size()) + 1) * sizeof(char16_t), 0);
  std::memcpy(data.data(), text.utf16(), static_cast<std::size_t>(text.size()) * sizeof(char16_t));
  return data;
}

std::unique_ptr<QMimeData> CopyOf(const QMimeData* source) {
  auto copy = std::make_unique<QMimeData>();
  if (!source) return copy;
  for (const QString& type : source->formats()) copy->setData(type, source->data(type));
  return copy;
}

}  // namespace

CQtClipboardBackend::CQtClipboardBackend(QClipboard::Mode mode) : m_mode(mode) {}

CQtClipboardBackend::~CQtClipboardBackend() = default;

QString CQtClipboardBackend::MimeTypeOf(UINT format) {
  const CStdStrW name = vantrel1::ClipboardNameOf(format);
  if (name.empty()) return {};
  return QStringLiteral("application/x-qt-windows-mime;value=\"%1\"")
      .arg(QString::fromUtf16(name.data(), static_cast<qsizetype>(name.size())));
}

bool CQtClipboardBackend::Open() {
  m_pending.reset();
  return SystemClipboard() != nullptr;
}

void CQtClipboardBackend::Close() {
  QClipboard* clipboard = SystemClipboard();
  if (clipboard && m_pending) clipboard->setMimeData(m_pending.release(), m_mode);
  m_pending.reset();
}

bool CQtClipboardBackend::Empty() {
  m_pending = std::make_unique<QMimeData>();
  return true;
}

const QMimeData* CQtClipboardBackend::Content() const {
  if (m_pending) return m_pending.get();
  QClipboard* clipboard = SystemClipboard();
  return clipboard ? clipboard->mimeData(m_mode) : nullptr;
}

bool CQtClipboardBackend::IsFormatAvailable(UINT format) {
  const QMimeData* content = Content();
  if (!content) return false;
  if (format == CF_UNICODETEXT) return content->hasText();
  const QString type = MimeTypeOf(format);
  return !type.isEmpty() && content->hasFormat(type);
}

bool CQtClipboardBackend::GetData(UINT format, std::vector<BYTE>& data) {
  if (!IsFormatAvailable(format)) return false;
  if (format == CF_UNICODETEXT) {
    data = BlockOf(Content()->text());
    return true;
  }
  const QByteArray bytes = Content()->data(MimeTypeOf(format));
  data.assign(bytes.begin(), bytes.end());
  return true;
}

bool CQtClipboardBackend::SetData(UINT format, const std::vector<BYTE>& data) {
  const QString type = MimeTypeOf(format);
  if (format != CF_UNICODETEXT && type.isEmpty()) return false;
  if (!m_pending) m_pending = CopyOf(Content());
  if (format == CF_UNICODETEXT)
    m_pending->setText(TextOf(data));
  else
    m_pending->setData(type, QByteArray(reinterpret_cast<const char*>(data.data()), static_cast<qsizetype>(data.size())));
  return true;
}
