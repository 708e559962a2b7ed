#pragma once
// CQSettingsRegistryStore: the suite's per-user settings (platform/Registry.h) kept by
// QSettings under the organisation "Corvia", where every program of the suite finds the
// same values. Install it with SetRegistryStore in a GUI program.
//
// A section may name nested keys ("Dialogs/Files"; '\' also separates, as in registry
// paths); value names may not contain either separator. Sections and names are matched
// without regard to case, as in the Windows registry: a value written as "startinsamples"
// replaces one stored as "StartInSamples", which keeps its spelling.
#include <memory>

#include <QString>

#include "platform/Export.h"
#include "platform/Registry.h"

class QSettings;

class VANTREL1_QT_EXPORT CQSettingsRegistryStore : public CRegistryStore {
 public:
  // The user's settings in the platform's native form.
  CQSettingsRegistryStore();
  // An INI file instead (tests, portable installations).
  explicit CQSettingsRegistryStore(const QString& iniFile);
  ~CQSettingsRegistryStore() override;
  CQSettingsRegistryStore(const CQSettingsRegistryStore&) = delete;
  CQSettingsRegistryStore& operator=(const CQSettingsRegistryStore&) = delete;

  bool Read(const CStdStrW& section, const CStdStrW& name, CStdStrW& value) override;
  // False when the name is unusable or the settings cannot be saved.
  bool Write(const CStdStrW& section, const CStdStrW& name, const CStdStrW& value) override;
  bool Delete(const CStdStrW& section, const CStdStrW& name) override;

 private:
  bool Resolve(const CStdStrW& section, const CStdStrW& name, QString* key) const;

  std::unique_ptr<QSettings> m_settings;
};
