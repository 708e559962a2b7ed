#include "util/Observer.h"

CObserver::~CObserver() = default;

int CObserver::Notify(unsigned int /*code*/, const CSubject* /*subject*/) { return 1; }
