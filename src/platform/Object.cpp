#include "platform/Object.h"

#include <algorithm>
#include <cstring>
#include <mutex>
#include <new>
#include <string>
#include <vector>

#include "platform/Utf.h"

namespace vantrel1 {
namespace {

struct ClassRegistry {
  std::mutex mutex;
  std::vector<const CRuntimeClass*> classes;
};

// Never destroyed: modules may unregister their classes while the process shuts down,
// in any order relative to this library's own static objects.
ClassRegistry& Registry() {
  static auto* registry = new ClassRegistry;
  return *registry;
}

}  // namespace
}  // namespace vantrel1

using vantrel1::Registry;

AFX_CLASSINIT::AFX_CLASSINIT(const CRuntimeClass* pNewClass) : m_pClass(pNewClass) {
  auto& registry = Registry();
  std::lock_guard lock(registry.mutex);
  registry.classes.push_back(pNewClass);
}

AFX_CLASSINIT::~AFX_CLASSINIT() {
  auto& registry = Registry();
  std::lock_guard lock(registry.mutex);
  auto& classes = registry.classes;
  auto found = std::find(classes.rbegin(), classes.rend(), m_pClass);
  if (found != classes.rend()) classes.erase(std::next(found).base());
}

CObject* CRuntimeClass::CreateObject() const {
  if (m_pfnCreateObject == nullptr) return nullptr;
  try {
    return m_pfnCreateObject();
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

bool CRuntimeClass::IsDerivedFrom(const CRuntimeClass* pBaseClass) const {
  for (const CRuntimeClass* c = this; c != nullptr; c = c->m_pBaseClass) {
    if (c == pBaseClass) return true;
  }
  return false;
}

// When two modules register the same name, the later one is found until it unloads.
const CRuntimeClass* CRuntimeClass::FromName(const char* lpszClassName) {
  if (lpszClassName == nullptr) return nullptr;
  auto& registry = Registry();
  std::lock_guard lock(registry.mutex);
  const auto& classes = registry.classes;
  auto found = std::find_if(classes.rbegin(), classes.rend(), [&](const CRuntimeClass* c) {
    return std::strcmp(c->m_lpszClassName, lpszClassName) == 0;
  });
  return found == classes.rend() ? nullptr : *found;
}

const CRuntimeClass* CRuntimeClass::FromName(LPCWSTR lpszClassName) {
  if (lpszClassName == nullptr) return nullptr;
  return FromName(vantrel1::ToUtf8(lpszClassName).c_str());
}

CObject* CRuntimeClass::CreateObject(const char* lpszClassName) {
  const CRuntimeClass* pClass = FromName(lpszClassName);
  return pClass == nullptr ? nullptr : pClass->CreateObject();
}

CObject* CRuntimeClass::CreateObject(LPCWSTR lpszClassName) {
  const CRuntimeClass* pClass = FromName(lpszClassName);
  return pClass == nullptr ? nullptr : pClass->CreateObject();
}

constinit const CRuntimeClass CObject::classCObject = {
    "CObject", static_cast<int>(sizeof(CObject)), VANTREL1_NO_SCHEMA, nullptr, nullptr};
static const AFX_CLASSINIT vantrel1_classinit_CObject(RUNTIME_CLASS(CObject));

const CRuntimeClass* CObject::GetThisClass() { return RUNTIME_CLASS(CObject); }

const CRuntimeClass* CObject::GetRuntimeClass() const { return RUNTIME_CLASS(CObject); }

CObject::~CObject() = default;

void CObject::Serialize(CArchive&) {}

bool CObject::IsKindOf(const CRuntimeClass* pClass) const {
  return pClass != nullptr && GetRuntimeClass()->IsDerivedFrom(pClass);
}

bool CObject::IsSerializable() const {
  return GetRuntimeClass()->m_wSchema != VANTREL1_NO_SCHEMA;
}
