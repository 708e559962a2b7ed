#include "platform/Object.h"

#include <gtest/gtest.h>

#include <memory>

// A small hierarchy declared the way the library's persistent classes are.
class VANTREL1_EXPORT CTestShape : public CObject {
  DECLARE_SERIAL(CTestShape)
 public:
  CTestShape() = default;
  int m_nSides = 3;
};
IMPLEMENT_SERIAL(CTestShape, CObject, 2)

class CTestSquare : public CTestShape {
  DECLARE_DYNCREATE(CTestSquare);  // the semicolon is optional
 public:
  CTestSquare() { m_nSides = 4; }
};
IMPLEMENT_DYNCREATE(CTestSquare, CTestShape);

class CTestAbstract : public CObject {
  DECLARE_DYNAMIC(CTestAbstract)
 public:
  virtual int Area() const = 0;
};
IMPLEMENT_DYNAMIC(CTestAbstract, CObject)

TEST(RuntimeClass, CreatesObjectsByNarrowAndWideName) {
  std::unique_ptr<CObject> square(CRuntimeClass::CreateObject("CTestSquare"));
  ASSERT_NE(square, nullptr);
  EXPECT_EQ(square->GetRuntimeClass(), RUNTIME_CLASS(CTestSquare));
  EXPECT_EQ(static_cast<CTestSquare*>(square.get())->m_nSides, 4);

  std::unique_ptr<CObject> shape(CRuntimeClass::CreateObject(u"CTestShape"));
  ASSERT_NE(shape, nullptr);
  EXPECT_EQ(shape->GetRuntimeClass(), RUNTIME_CLASS(CTestShape));
  EXPECT_EQ(static_cast<CTestShape*>(shape.get())->m_nSides, 3);
}

TEST(RuntimeClass, RefusesUnknownNamesAndClassesWithoutFactory) {
  EXPECT_EQ(CRuntimeClass::FromName("CTestCircle"), nullptr);
  EXPECT_EQ(CRuntimeClass::FromName("ctestshape"), nullptr);
  EXPECT_EQ(CRuntimeClass::FromName(static_cast<const char*>(nullptr)), nullptr);
  EXPECT_EQ(CRuntimeClass::FromName(u"CTestŠape"), nullptr);
  EXPECT_EQ(CRuntimeClass::FromName("CTestAbstract"), RUNTIME_CLASS(CTestAbstract));
  EXPECT_EQ(CRuntimeClass::CreateObject("CTestAbstract"), nullptr);
  EXPECT_EQ(CRuntimeClass::CreateObject("CObject"), nullptr);
  EXPECT_EQ(CRuntimeClass::FromName("CObject"), RUNTIME_CLASS(CObject));
}

TEST(RuntimeClass, KindFollowsTheBaseChainUpwardsAndSchemaMakesASerialClass) {
  CTestSquare square;
  CTestShape shape;
  const CObject& asObject = square;
  EXPECT_TRUE(asObject.IsKindOf(RUNTIME_CLASS(CTestSquare)));
  EXPECT_TRUE(asObject.IsKindOf(RUNTIME_CLASS(CTestShape)));
  EXPECT_TRUE(asObject.IsKindOf(RUNTIME_CLASS(CObject)));
  EXPECT_FALSE(asObject.IsKindOf(RUNTIME_CLASS(CTestAbstract)));
  EXPECT_FALSE(asObject.IsKindOf(nullptr));
  EXPECT_FALSE(shape.IsKindOf(RUNTIME_CLASS(CTestSquare)));
  EXPECT_EQ(RUNTIME_CLASS(CTestShape)->m_wSchema, 2u);
  EXPECT_TRUE(shape.IsSerializable());
  EXPECT_FALSE(square.IsSerializable());
}

TEST(RuntimeClass, RegistrationLastsAsLongAsItsObject) {
  static const CRuntimeClass shadow = {"CTestShape", 1, 9, nullptr, RUNTIME_CLASS(CObject)};
  static const CRuntimeClass extra = {"CTestExtra", 1, 1, nullptr, RUNTIME_CLASS(CObject)};
  {
    AFX_CLASSINIT registerShadow(&shadow);
    AFX_CLASSINIT registerExtra(&extra);
    EXPECT_EQ(CRuntimeClass::FromName("CTestShape"), &shadow);
    EXPECT_EQ(CRuntimeClass::FromName("CTestExtra"), &extra);
  }
  EXPECT_EQ(CRuntimeClass::FromName("CTestShape"), RUNTIME_CLASS(CTestShape));
  EXPECT_EQ(CRuntimeClass::FromName("CTestExtra"), nullptr);
}
