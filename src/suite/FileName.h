#pragma once
// CFileName: a file's path with its parts at hand (the help file's name, table files).
// The parts are those of splitpath2 (suite/FilePath.h).
#include "platform/StdStr.h"
#include "platform/Types.h"

class VANTREL1_EXPORT CFileName {
 public:
  CFileName() = default;
  CFileName(CStdStrArg<WCHAR> path) : m_strPath(path.View()) {}

  const CStdStrW& GetPath() const { return m_strPath; }
  void SetPath(CStdStrArg<WCHAR> path) { m_strPath = CStdStrW(path.View()); }
  bool IsEmpty() const { return m_strPath.empty(); }

  CStdStrW GetDirectory() const;  // with its trailing separator; empty for a bare name
  CStdStrW GetTitle() const;      // the name without folder and extension
  CStdStrW GetExtension() const;  // with its dot; empty when there is none
  CStdStrW GetFileName() const;   // title and extension

  // Replaces the extension, or appends one to a name without; a dot is supplied when
  // `ext` lacks it, and an empty `ext` removes the extension.
  void SetExtension(CStdStrArg<WCHAR> ext);
  // A new path in another folder, keeping the file name.
  void SetDirectory(CStdStrArg<WCHAR> dir);

  // 1 when the path names an existing file (not a folder).
  int Exists() const;

  bool operator==(const CFileName& other) const { return m_strPath == other.m_strPath; }

 private:
  CStdStrW m_strPath;
};
