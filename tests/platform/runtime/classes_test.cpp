#include "runtime/AcRxClass.h"
#include "runtime/CException.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace veldrin::tests {
namespace {

class Classes : public ::testing::Test {
protected:
    Classes() {
        m_token = registry.addListener([this](AcRxClass& c) { told.push_back("+" + c.name()); },
                                       [this](AcRxClass& c) { told.push_back("-" + c.name()); });
    }
    ~Classes() override {
        registry.removeListener(m_token);
        for (const char* name : {"TestChild", "TestBase"}) deleteAcRxClass(acrxClassByName(name));
    }
    AcRxClass* add(const char* name, const char* parent) {
        return newAcRxClass(name, parent, 1, 2, 0, nullptr, "TESTDXF", "Tests");
    }
    AcRxClassRegistry& registry = AcRxClassRegistry::instance();
    std::vector<std::string> told;

private:
    int m_token;
};

TEST_F(Classes, ANameIsTakenOnce) {
    AcRxClass* const first = add("TestBase", "AcRxObject");
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(add("TestBase", "AcRxObject"), nullptr);
    EXPECT_EQ(acrxClassByName("TestBase"), first);
    deleteAcRxClass(first);
    EXPECT_EQ(acrxClassByName("TestBase"), nullptr);
    EXPECT_NE(add("TestBase", "AcRxObject"), nullptr);
    EXPECT_EQ(acrxClassByName("AcRxObject"), AcRxObject::desc());
}

TEST_F(Classes, ParentsAreLinkedByNameWhateverTheOrder) {
    AcRxClass* const child = add("TestChild", "TestBase");
    AcRxClass* const base = add("TestBase", "AcRxObject");
    EXPECT_EQ(child->myParent(), nullptr);
    EXPECT_TRUE(told.empty());
    acrxBuildClassHierarchy();
    acrxBuildClassHierarchy();
    EXPECT_EQ(told, (std::vector<std::string>{"+TestBase", "+TestChild"})) << "each once, all linked by then";
    EXPECT_TRUE(child->isDerivedFrom(base));
    EXPECT_TRUE(child->isDerivedFrom(AcRxObject::desc()));
    EXPECT_FALSE(base->isDerivedFrom(child));
    deleteAcRxClass(base);
    EXPECT_EQ(child->myParent(), nullptr) << "and not a descriptor that is gone";
    EXPECT_EQ(told.back(), "-TestBase");
    EXPECT_EQ(child->create(), nullptr);
}

TEST_F(Classes, AbortLeavesByException) {
    try {
        acrx_abort("Class mismatch");
        FAIL();
    } catch (const CException& fault) {
        EXPECT_EQ(fault.GetErrorMessage(), "Class mismatch");
    }
}

} // namespace
} // namespace veldrin::tests
