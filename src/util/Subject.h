#pragma once
// The sending half of the suite's observer pair: an ordered list of observers, not owned,
// each told of a notification code in the order they were attached.
#include <cstddef>
#include <cstdint>
#include <vector>

#include "util/Observer.h"

class VANTREL1_EXPORT CSubject {
 public:
  CSubject();
  CSubject(const CSubject&) = delete;
  CSubject& operator=(const CSubject&) = delete;
  virtual ~CSubject();

  // Appends the observer unless it is null or already attached; returns the count.
  std::int64_t Attach(CObserver* observer);
  // Removes the observer if attached; returns the count left.
  std::int64_t Detach(CObserver* observer);
  void DetachAll();
  int IsAttached(CObserver* observer) const;

  // Calls Notify(code, this) on each observer, first to last; returns 1.
  virtual int NotifyAll(unsigned int code);

 private:
  std::vector<CObserver*> m_observers;
  // For each walk in progress (a Notify may start another), the index of the next
  // observer to call, so that detaching during a walk neither skips nor repeats anyone.
  std::vector<std::size_t*> m_walks;
};
