#include "platform/classlib/CObject.h"

#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <type_traits>

namespace shapes {

class Shape : public CObject {
    DECLARE_DYNAMIC(Shape)

    virtual int corners() const = 0;
};

class Square : public Shape {
    DECLARE_DYNCREATE(Square)

    int corners() const override { return 4; }
    long side = 7;
};

class Tile : public Square { };  // has no record of its own

class Greedy : public CObject {
    DECLARE_DYNCREATE(Greedy)

    Greedy() { throw std::bad_alloc(); }
};

IMPLEMENT_DYNAMIC(Shape, CObject)
IMPLEMENT_DYNCREATE(Square, Shape)
IMPLEMENT_DYNCREATE(Greedy, CObject)

}  // namespace shapes

using namespace shapes;

// Read by a constructor of file scope that stands before all records of this program.
extern LPCSTR nameAtLoad;
LPCSTR nameAtLoad = RUNTIME_CLASS(Square)->m_lpszClassName;

TEST(RuntimeClass, tellsNameSizeAndSchema)
{
    CRuntimeClass const* const record = RUNTIME_CLASS(Square);

    EXPECT_STREQ(record->m_lpszClassName, "Square");
    EXPECT_EQ(record->m_nObjectSize, int(sizeof(Square)));
    EXPECT_EQ(record->m_wSchema, 0xFFFFu);
}

TEST(RuntimeClass, leadsToTheBaseClass)
{
    EXPECT_EQ(RUNTIME_CLASS(Square)->m_pfnGetBaseClass(), RUNTIME_CLASS(Shape));
    EXPECT_EQ(RUNTIME_CLASS(Shape)->m_pfnGetBaseClass(), RUNTIME_CLASS(CObject));
    EXPECT_EQ(RUNTIME_CLASS(CObject)->m_pfnGetBaseClass, nullptr);
}

TEST(RuntimeClass, isOneRecordPerClass)
{
    Square const square;

    EXPECT_EQ(square.GetRuntimeClass(), RUNTIME_CLASS(Square));
    EXPECT_EQ(RUNTIME_CLASS(Square), &Square::classSquare);
    EXPECT_EQ(RUNTIME_CLASS(CObject), &CObject::classCObject);
}

TEST(RuntimeClass, canBeReadBeforeMain)
{
    EXPECT_STREQ(nameAtLoad, "Square");
}

TEST(RuntimeClass, makesAnObject)
{
    std::unique_ptr<CObject> const made(RUNTIME_CLASS(Square)->CreateObject());

    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->GetRuntimeClass(), RUNTIME_CLASS(Square));
    EXPECT_EQ(static_cast<Square&>(*made).side, 7);
}

TEST(RuntimeClass, makesNoObjectOfAClassDeclaredWithoutCreation)
{
    EXPECT_EQ(RUNTIME_CLASS(Shape)->CreateObject(), nullptr);
    EXPECT_EQ(RUNTIME_CLASS(CObject)->CreateObject(), nullptr);
}

TEST(RuntimeClass, givesNullWhenMemoryRunsOut)
{
    EXPECT_EQ(RUNTIME_CLASS(Greedy)->CreateObject(), nullptr);
}

TEST(RuntimeClass, isDerivedFromItselfAndItsBasesAlone)
{
    EXPECT_TRUE(RUNTIME_CLASS(Square)->IsDerivedFrom(RUNTIME_CLASS(Square)));
    EXPECT_TRUE(RUNTIME_CLASS(Square)->IsDerivedFrom(RUNTIME_CLASS(CObject)));
    EXPECT_FALSE(RUNTIME_CLASS(Shape)->IsDerivedFrom(RUNTIME_CLASS(Square)));
    EXPECT_FALSE(RUNTIME_CLASS(Square)->IsDerivedFrom(RUNTIME_CLASS(Greedy)));
    EXPECT_FALSE(RUNTIME_CLASS(Square)->IsDerivedFrom(nullptr));
}

TEST(Object, isOfItsClassAndTheBases)
{
    Square const square;

    EXPECT_TRUE(square.IsKindOf(RUNTIME_CLASS(Square)));
    EXPECT_TRUE(square.IsKindOf(RUNTIME_CLASS(Shape)));
    EXPECT_TRUE(square.IsKindOf(RUNTIME_CLASS(CObject)));
    EXPECT_FALSE(square.IsKindOf(RUNTIME_CLASS(Greedy)));
}

TEST(Object, ofAClassWithoutRecordCountsAsItsBase)
{
    Tile const tile;

    EXPECT_EQ(tile.GetRuntimeClass(), RUNTIME_CLASS(Square));
}

TEST(Object, isCastToWhatItIs)
{
    Square square;
    CObject* const object = &square;
    CObject* const none = nullptr;

    EXPECT_EQ(DYNAMIC_DOWNCAST(Shape, object), &square);
    EXPECT_EQ(DYNAMIC_DOWNCAST(Greedy, object), nullptr);
    EXPECT_EQ(DYNAMIC_DOWNCAST(Square, none), nullptr);
}

TEST(Object, isNotCopied)
{
    EXPECT_FALSE(std::is_copy_constructible_v<Square>);
    EXPECT_FALSE(std::is_copy_assignable_v<Square>);
}
