#pragma once
// CObject and its run-time class records: every persistent class of the library names
// its class, can be created by that name and tells whether it is a kind of another class.
//
// A class takes part by one macro in its declaration and one in its source file:
//
//   class VANTREL1_EXPORT CLineItem : public CObject {
//     DECLARE_SERIAL(CLineItem)
//    public:
//     void Serialize(CArchive& ar) override;
//   };
//
//   IMPLEMENT_SERIAL(CLineItem, CObject, 2)
//
// DECLARE_DYNAMIC gives the class record, GetThisClass and GetRuntimeClass;
// DECLARE_DYNCREATE adds the factory `static CObject* CreateObject()` (which needs a
// default constructor); DECLARE_SERIAL is the same with a schema number other than 0xFFFF.
// The DECLARE macros leave the class in `public:` and may be followed by a semicolon or
// not. Because GetRuntimeClass is declared `override`, clang expects the class's other
// overrides, such as Serialize, to say `override` as well (destructors need not).
#include "platform/Types.h"

class CObject;
class CArchive;

// The schema of a class that is not serialisable.
constexpr UINT VANTREL1_NO_SCHEMA = 0xFFFF;
// Or'ed into a schema: loading accepts any stored schema and lets the class decide.
constexpr UINT VERSIONABLE_SCHEMA = 0x80000000u;

// One record per class, built at compile time (so records may point at one another
// across translation units and libraries without any order of initialisation).
struct VANTREL1_EXPORT CRuntimeClass {
  const char* m_lpszClassName;
  int m_nObjectSize;
  UINT m_wSchema;
  CObject* (*m_pfnCreateObject)();  // null for classes that cannot be created by name
  const CRuntimeClass* m_pBaseClass;  // null only for CObject

  // A new object of this class, or null when the class has no factory or memory runs out.
  CObject* CreateObject() const;
  bool IsDerivedFrom(const CRuntimeClass* pBaseClass) const;

  // Classes are found among those registered by an IMPLEMENT_ macro in a loaded module;
  // names are compared exactly. Unknown names give null.
  static const CRuntimeClass* FromName(const char* lpszClassName);
  static const CRuntimeClass* FromName(LPCWSTR lpszClassName);
  static CObject* CreateObject(const char* lpszClassName);
  static CObject* CreateObject(LPCWSTR lpszClassName);
};

// Adds a class record to the registry for as long as the object lives (the IMPLEMENT_
// macros make one static object per class, so a module's classes leave with it).
struct VANTREL1_EXPORT AFX_CLASSINIT {
  explicit AFX_CLASSINIT(const CRuntimeClass* pNewClass);
  ~AFX_CLASSINIT();
  AFX_CLASSINIT(const AFX_CLASSINIT&) = delete;
  AFX_CLASSINIT& operator=(const AFX_CLASSINIT&) = delete;

 private:
  const CRuntimeClass* m_pClass;
};

class VANTREL1_EXPORT CObject {
 public:
  static const CRuntimeClass classCObject;
  static const CRuntimeClass* GetThisClass();

  // Declared in this order so that derived classes keep the framework's slot order:
  // the class record, the destructor, the archive operation.
  virtual const CRuntimeClass* GetRuntimeClass() const;
  virtual ~CObject();
  // Reads or writes nothing; persistent classes override it.
  virtual void Serialize(CArchive& ar);

  // False for a null class.
  bool IsKindOf(const CRuntimeClass* pClass) const;
  bool IsSerializable() const;

 protected:
  CObject() = default;
  CObject(const CObject&) = default;
  CObject& operator=(const CObject&) = default;
};

#define RUNTIME_CLASS(class_name) (&class_name::class##class_name)

// Ends with an inline definition so that a semicolon after the macro is optional.
#define DECLARE_DYNAMIC(class_name)                                              \
 public:                                                                         \
  static const CRuntimeClass class##class_name;                                  \
  static const CRuntimeClass* GetThisClass() { return RUNTIME_CLASS(class_name); } \
  const CRuntimeClass* GetRuntimeClass() const override {                        \
    return RUNTIME_CLASS(class_name);                                            \
  }

#define DECLARE_DYNCREATE(class_name) \
 public:                              \
  static CObject* CreateObject();     \
  DECLARE_DYNAMIC(class_name)

#define DECLARE_SERIAL(class_name) DECLARE_DYNCREATE(class_name)

// The record of a class with the given schema and factory (null for none).
#define IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, wSchema, pfnNew)             \
  constinit const CRuntimeClass class_name::class##class_name = {                        \
      #class_name, static_cast<int>(sizeof(class_name)), (wSchema), (pfnNew),            \
      RUNTIME_CLASS(base_class_name)};                                                   \
  static const AFX_CLASSINIT vantrel1_classinit_##class_name(RUNTIME_CLASS(class_name));

#define IMPLEMENT_DYNAMIC(class_name, base_class_name) \
  IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, VANTREL1_NO_SCHEMA, nullptr)

#define IMPLEMENT_DYNCREATE(class_name, base_class_name)            \
  CObject* class_name::CreateObject() { return new class_name; }    \
  IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, VANTREL1_NO_SCHEMA, \
                         &class_name::CreateObject)

#define IMPLEMENT_SERIAL(class_name, base_class_name, wSchema)   \
  CObject* class_name::CreateObject() { return new class_name; } \
  IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, (wSchema), &class_name::CreateObject)
