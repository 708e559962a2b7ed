#pragma once
// The archive's one exception. Archives throw it by value; the cause numbers are the
// framework's, so that code testing `m_cause` reads as it does on Windows.
#include <exception>

#include "platform/StdStr.h"
#include "platform/Types.h"

class VANTREL1_EXPORT CArchiveException : public std::exception {
 public:
  enum {
    none = 0,
    genericException = 1,  // the file could not be opened, written or closed; a closed archive
    readOnly = 2,          // writing to an archive that loads
    endOfFile = 3,         // reading past the end, or a length longer than what is left
    writeOnly = 4,         // reading from an archive that stores
    badIndex = 5,
    badClass = 6,
    badSchema = 7,
    bufferFull = 8,
  };

  explicit CArchiveException(int cause = none, const CStdStrW& strArchiveName = {});
  ~CArchiveException() override;

  const char* what() const noexcept override;

  int m_cause;
  CStdStrW m_strFileName;  // empty for memory archives
};

[[noreturn]] VANTREL1_EXPORT void AfxThrowArchiveException(int cause,
                                                           LPCWSTR lpszArchiveName = nullptr);
