#include "qt/QSettingsRegistryStore.h"

#include <algorithm>

#include <QSettings>
#include <QStringList>

#include "platform/CharClass.h"

namespace {

QString ToQString(const CStdStrW& text) {
  return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}

bool SameName(const QString& a, const QString& b) {
  if (a.size() != b.size()) return false;
  for (qsizetype i = 0; i < a.size(); ++i)
    if (vantrel1::ClassicFoldedDifference(a[i].unicode(), b[i].unicode()) != 0) return false;
  return true;
}

// The stored spelling of `wanted` among `existing`, or `wanted` itself when it is new.
QString Spelling(const QStringList& existing, const QString& wanted) {
  for (const QString& name : existing)
    if (SameName(name, wanted)) return name;
  return wanted;
}

bool IsSeparator(QChar c) { return c == u'/' || c == u'\\'; }

}  // namespace

CQSettingsRegistryStore::CQSettingsRegistryStore()
    : m_settings(std::make_unique<QSettings>(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Corvia"))) {}

CQSettingsRegistryStore::CQSettingsRegistryStore(const QString& iniFile)
    : m_settings(std::make_unique<QSettings>(iniFile, QSettings::IniFormat)) {}

CQSettingsRegistryStore::~CQSettingsRegistryStore() = default;

// The full key of the value as it is (or will be) stored, each part in its stored spelling.
bool CQSettingsRegistryStore::Resolve(const CStdStrW& section, const CStdStrW& name, QString* key) const {
  const QString valueName = ToQString(name);
  if (valueName.isEmpty() || std::any_of(valueName.begin(), valueName.end(), IsSeparator)) return false;
  QString path;
  QString part;
  const QString sectionPath = ToQString(section) + u'/';
  for (const QChar c : sectionPath) {
    if (!IsSeparator(c)) {
      part += c;
      continue;
    }
    if (part.isEmpty()) continue;
    m_settings->beginGroup(path);
    path += Spelling(m_settings->childGroups(), part) + u'/';
    m_settings->endGroup();
    part.clear();
  }
  m_settings->beginGroup(path);
  *key = path + Spelling(m_settings->childKeys(), valueName);
  m_settings->endGroup();
  return true;
}

bool CQSettingsRegistryStore::Read(const CStdStrW& section, const CStdStrW& name, CStdStrW& value) {
  QString key;
  if (!Resolve(section, name, &key) || !m_settings->contains(key)) return false;
  const QString text = m_settings->value(key).toString();
  value = CStdStrW(std::u16string(reinterpret_cast<const char16_t*>(text.utf16()), static_cast<std::size_t>(text.size())));
  return true;
}

bool CQSettingsRegistryStore::Write(const CStdStrW& section, const CStdStrW& name, const CStdStrW& value) {
  QString key;
  if (!Resolve(section, name, &key)) return false;
  m_settings->setValue(key, ToQString(value));
  m_settings->sync();
  return m_settings->status() == QSettings::NoError;
}

bool CQSettingsRegistryStore::Delete(const CStdStrW& section, const CStdStrW& name) {
  QString key;
  if (!Resolve(section, name, &key)) return false;
  m_settings->remove(key);
  m_settings->sync();
  return m_settings->status() == QSettings::NoError;
}
