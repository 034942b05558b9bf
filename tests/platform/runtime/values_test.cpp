#include "runtime/ResbufChain.h"
#include "runtime/resbuf.h"

#include <gtest/gtest.h>

namespace veldrin::tests {
namespace {

TEST(Chains, AListKeepsTypesAndCopiesWhatItIsGiven) {
    char text[] = "text";
    const double point[] = {1.0, 2.0, 3.0};
    const ads_name name = {7, 8};
    const ResbufPtr list(acutBuildList(RTLB, RTREAL, 1.5, RTSHORT, -2, RTLONG, 70000, RTSTR, text, RT3DPOINT,
                                       point, RTENAME, name, RTT, RTNIL, RTLE, RTDXF0, "LINE", 1, "a", 10,
                                       point, 62, 3, 90, 100000, 1071, -1, 0));
    ASSERT_NE(list, nullptr);
    text[0] = 'X';
    const resbuf* item = list->rbnext;
    EXPECT_EQ(item->resval.rreal, 1.5);
    EXPECT_EQ((item = item->rbnext)->resval.rint, -2);
    EXPECT_EQ((item = item->rbnext)->resval.rlong, 70000);
    EXPECT_STREQ((item = item->rbnext)->resval.rstring, "text");
    EXPECT_EQ((item = item->rbnext)->resval.rpoint[2], 3.0);
    EXPECT_EQ((item = item->rbnext)->resval.rlname[1], 8);
    for (int i = 0; i < 4; ++i) item = item->rbnext;
    EXPECT_EQ(item->restype, 0) << "the group of code 0 has its own type in the call";
    EXPECT_STREQ(item->resval.rstring, "LINE");
    const ResbufPtr copy = copyChain(list.get());
    EXPECT_NE(copy->rbnext->rbnext->rbnext->rbnext->resval.rstring,
              list->rbnext->rbnext->rbnext->rbnext->resval.rstring);
}

TEST(Chains, AnUnknownTypeMakesNoList) {
    EXPECT_EQ(acutBuildList(RTSTR, "freed with the rest", 4999, 1, 0), nullptr);
    EXPECT_EQ(acutBuildList(65, 1, 80, 1, 0), nullptr);
}

TEST(Chains, AMillionItemsAreFreedWithoutDepth) {
    ResbufBuilder builder;
    for (int i = 0; i < 1000000; ++i) builder.addReal(RTREAL, i);
    EXPECT_EQ(acutRelRb(builder.take().release()), RTNORM);
}

TEST(Chains, GroupCodesSayHowTheyAreStored) {
    const std::pair<int, short> expected[] = {
        {-4, RTSTR},    {-3, RTNONE},      {-1, RTENAME},    {0, RTSTR},      {9, RTSTR},     {10, RT3DPOINT},
        {38, RTREAL},   {59, RTREAL},      {60, RTSHORT},    {80, RTNONE},    {90, RTLONG},   {100, RTSTR},
        {140, RTREAL},  {170, RTSHORT},    {210, RT3DPOINT}, {290, RTSHORT},  {310, RTSTR},   {330, RTENAME},
        {370, RTSHORT}, {390, RTENAME},    {410, RTSTR},     {420, RTLONG},   {999, RTSTR},   {1000, RTSTR},
        {1005, RTSTR},  {1010, RT3DPOINT}, {1040, RTREAL},   {1070, RTSHORT}, {1071, RTLONG}, {1072, RTNONE},
    };
    for (const auto& [code, kind] : expected) EXPECT_EQ(acutGroupCodeKind(code), kind) << code;
}

} // namespace
} // namespace veldrin::tests
