#include "util/Subject.h"

#include <algorithm>

namespace {

// Keeps a walk's position known to Detach for as long as the walk runs, also when an
// observer throws.
class WalkRegistration {
 public:
  WalkRegistration(std::vector<std::size_t*>& walks, std::size_t* next) : m_walks(walks) {
    m_walks.push_back(next);
  }
  ~WalkRegistration() { m_walks.pop_back(); }
  WalkRegistration(const WalkRegistration&) = delete;
  WalkRegistration& operator=(const WalkRegistration&) = delete;

 private:
  std::vector<std::size_t*>& m_walks;
};

}  // namespace

CSubject::CSubject() { m_observers.reserve(10); }

CSubject::~CSubject() = default;

std::int64_t CSubject::Attach(CObserver* observer) {
  if (observer != nullptr && !IsAttached(observer)) m_observers.push_back(observer);
  return static_cast<std::int64_t>(m_observers.size());
}

std::int64_t CSubject::Detach(CObserver* observer) {
  const auto found = std::find(m_observers.begin(), m_observers.end(), observer);
  if (found != m_observers.end()) {
    const auto index = static_cast<std::size_t>(found - m_observers.begin());
    m_observers.erase(found);
    for (std::size_t* next : m_walks)
      if (index < *next) --*next;
  }
  return static_cast<std::int64_t>(m_observers.size());
}

void CSubject::DetachAll() {
  m_observers.clear();
  for (std::size_t* next : m_walks) *next = 0;
}

int CSubject::IsAttached(CObserver* observer) const {
  return std::find(m_observers.begin(), m_observers.end(), observer) != m_observers.end() ? 1 : 0;
}

// The next position is taken before each call, as a linked-list walk takes it: an
// observer that detaches itself does not disturb the walk, and neither, here, does one
// that detaches another. An observer attached by the one notified last is not reached.
int CSubject::NotifyAll(unsigned int code) {
  std::size_t next = 0;
  WalkRegistration registration(m_walks, &next);
  while (next < m_observers.size()) {
    CObserver* observer = m_observers[next++];
    const bool last = next == m_observers.size();
    observer->Notify(code, this);
    if (last) break;
  }
  return 1;
}
