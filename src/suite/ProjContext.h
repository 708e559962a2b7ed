#pragma once
// The one PROJ context of the process and the lock around it. PROJ objects belong to the
// context they were made in and a context must not be used by two threads at once, so
// every call into PROJ, including the destruction of an object, is made while a ProjLock
// is held.
#include <proj.h>

#include <memory>
#include <mutex>
#include <string>

namespace vantrel1 {

class ProjLock {
 public:
  ProjLock();
  ProjLock(const ProjLock&) = delete;
  ProjLock& operator=(const ProjLock&) = delete;

  PJ_CONTEXT* Context() const { return m_context; }

 private:
  std::unique_lock<std::mutex> m_lock;
  PJ_CONTEXT* m_context;
};

struct PjDeleter {
  void operator()(PJ* object) const { proj_destroy(object); }
};
// Only to be reset or destroyed under a ProjLock.
using PjPtr = std::unique_ptr<PJ, PjDeleter>;

// A text PROJ returned (owned by PROJ, valid until the next call on the object), or "".
inline std::string ProjText(const char* text) { return text ? std::string(text) : std::string(); }

}  // namespace vantrel1
