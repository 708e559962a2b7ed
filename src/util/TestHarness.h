#pragma once
// The suite's output-file tests: each case names a file a program produced and the
// reference file it must equal; a suite runs its cases and reports which differ. Files are
// compared by their CRC-32 (read through the mapping), so references may be large images
// or documents.
#include <vector>

#include "platform/StdStr.h"
#include "platform/Types.h"

class VANTREL1_EXPORT UT_TestCase {
 public:
  UT_TestCase(const CStdStrW& name, const CStdStrW& output, const CStdStrW& reference);

  // 1 when both files were read and their checksums agree, else 0.
  int Run();

  const CStdStrW& GetName() const { return m_name; }
  const CStdStrW& GetOutput() const { return m_output; }
  const CStdStrW& GetReference() const { return m_reference; }
  DWORD GetOutputCrc() const { return m_outputCrc; }
  DWORD GetReferenceCrc() const { return m_referenceCrc; }
  // Windows error codes of the last run's reads (0 = read).
  DWORD GetOutputError() const { return m_outputError; }
  DWORD GetReferenceError() const { return m_referenceError; }
  int Passed() const { return m_passed; }
  // One line saying what the last run found.
  CStdStrW Describe() const;

 private:
  CStdStrW m_name, m_output, m_reference;
  DWORD m_outputCrc = 0, m_referenceCrc = 0;
  DWORD m_outputError = 0, m_referenceError = 0;
  int m_passed = 0;
  bool m_ran = false;
};

class VANTREL1_EXPORT UT_TestSuite {
 public:
  explicit UT_TestSuite(const CStdStrW& name = CStdStrW());

  void AddCase(const UT_TestCase& testCase);
  int GetCount() const { return static_cast<int>(m_cases.size()); }
  UT_TestCase* GetCase(int index);

  // Runs every case and returns the number that failed.
  int Run();
  int GetFailed() const;
  // The cases' lines, then "N passed, N failed".
  CStdStrW Report() const;

 private:
  CStdStrW m_name;
  std::vector<UT_TestCase> m_cases;
};
