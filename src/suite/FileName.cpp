#include "suite/FileName.h"

#include "suite/FilePath.h"

CStdStrW CFileName::GetDirectory() const {
  CStdStrW dir;
  splitpath2(m_strPath, &dir, nullptr, nullptr);
  return dir;
}

CStdStrW CFileName::GetTitle() const {
  CStdStrW title;
  splitpath2(m_strPath, nullptr, &title, nullptr);
  return title;
}

CStdStrW CFileName::GetExtension() const {
  CStdStrW ext;
  splitpath2(m_strPath, nullptr, nullptr, &ext);
  return ext;
}

CStdStrW CFileName::GetFileName() const { return GetTitle() + GetExtension(); }

void CFileName::SetExtension(CStdStrArg<WCHAR> ext) {
  CStdStrW dir, title;
  splitpath2(m_strPath, &dir, &title, nullptr);
  m_strPath = dir + title;
  if (ext.View().empty()) return;
  if (ext.View().front() != u'.') m_strPath.push_back(u'.');
  m_strPath.append(ext.View());
}

void CFileName::SetDirectory(CStdStrArg<WCHAR> dir) {
  CStdStrW path(dir.View());
  if (!path.empty() && path.back() != u'/' && path.back() != u'\\') path.push_back(u'/');
  m_strPath = path + GetFileName();
}

int CFileName::Exists() const { return FileExistsX(m_strPath.c_str(), FILE_EXISTS_FILE); }
