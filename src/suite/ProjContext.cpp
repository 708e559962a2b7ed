#include "suite/ProjContext.h"

namespace vantrel1 {
namespace {

struct SharedContext {
  std::mutex mutex;
  PJ_CONTEXT* context = nullptr;
};

// Never destroyed: systems held in static objects are released after every other static
// is gone, and they still need the context and its lock then.
SharedContext& Shared() {
  static SharedContext* shared = new SharedContext;
  return *shared;
}

PJ_CONTEXT* CreateContext() {
  PJ_CONTEXT* context = proj_context_create();
  if (context) {
    // Failures are reported through results; PROJ's own messages would only reach stderr.
    proj_log_level(context, PJ_LOG_NONE);
    proj_context_set_enable_network(context, 0);
  }
  return context;
}

}  // namespace

ProjLock::ProjLock() : m_lock(Shared().mutex), m_context(nullptr) {
  SharedContext& shared = Shared();
  if (!shared.context) shared.context = CreateContext();
  m_context = shared.context;
}

}  // namespace vantrel1
