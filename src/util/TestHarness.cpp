#include "util/TestHarness.h"

#include "util/Crc32Static.h"

UT_TestCase::UT_TestCase(const CStdStrW& name, const CStdStrW& output, const CStdStrW& reference)
    : m_name(name), m_output(output), m_reference(reference) {}

int UT_TestCase::Run() {
  m_outputCrc = m_referenceCrc = 0;
  m_outputError = CCrc32Static::FileCrc32Filemap(m_output.c_str(), m_outputCrc);
  m_referenceError = CCrc32Static::FileCrc32Filemap(m_reference.c_str(), m_referenceCrc);
  m_passed = (m_outputError == 0 && m_referenceError == 0 && m_outputCrc == m_referenceCrc) ? 1 : 0;
  m_ran = true;
  return m_passed;
}

CStdStrW UT_TestCase::Describe() const {
  CStdStrW line;
  if (!m_ran) {
    line.Format(u"%s: not run", m_name);
  } else if (m_outputError != 0) {
    line.Format(u"%s: FAILED, output %s cannot be read (error %u)", m_name, m_output, m_outputError);
  } else if (m_referenceError != 0) {
    line.Format(u"%s: FAILED, reference %s cannot be read (error %u)", m_name, m_reference,
                m_referenceError);
  } else if (!m_passed) {
    line.Format(u"%s: FAILED, %s has CRC %08X, reference %s has %08X", m_name, m_output, m_outputCrc,
                m_reference, m_referenceCrc);
  } else {
    line.Format(u"%s: passed (CRC %08X)", m_name, m_outputCrc);
  }
  return line;
}

UT_TestSuite::UT_TestSuite(const CStdStrW& name) : m_name(name) {}

void UT_TestSuite::AddCase(const UT_TestCase& testCase) { m_cases.push_back(testCase); }

UT_TestCase* UT_TestSuite::GetCase(int index) {
  if (index < 0 || index >= GetCount()) return nullptr;
  return &m_cases[static_cast<std::size_t>(index)];
}

int UT_TestSuite::Run() {
  for (UT_TestCase& c : m_cases) c.Run();
  return GetFailed();
}

int UT_TestSuite::GetFailed() const {
  int failed = 0;
  for (const UT_TestCase& c : m_cases) failed += c.Passed() ? 0 : 1;
  return failed;
}

CStdStrW UT_TestSuite::Report() const {
  CStdStrW text;
  if (!m_name.IsEmpty()) text.AppendFormat(u"%s\n", m_name);
  for (const UT_TestCase& c : m_cases) text.AppendFormat(u"%s\n", c.Describe());
  const int failed = GetFailed();
  text.AppendFormat(u"%d passed, %d failed\n", GetCount() - failed, failed);
  return text;
}
