#pragma once
// The receiving half of the suite's observer pair: a subject calls Notify on each of its
// observers with a notification code.
#include "platform/Export.h"

class CSubject;

class VANTREL1_EXPORT CObserver {
 public:
  virtual ~CObserver();
  // The base class ignores the notification. The subject ignores the result.
  virtual int Notify(unsigned int code, const CSubject* subject);
};
