#include "drawing/AcDbDatabase.h"
#include "host/LispArguments.h"
#include "module/ModuleTest.h"

#include <cmath>

using namespace plumb;

namespace {

// A chain from acutBuildList, and a cursor on it.
class Chain {
public:
    explicit Chain(resbuf* head) : cursor(head), m_head(head) {}
    ~Chain() { acutRelRb(m_head); }
    Chain(const Chain&) = delete;
    Chain& operator=(const Chain&) = delete;

    int position() const {
        int n = 0;
        for (const resbuf* item = m_head; item && item != cursor; item = item->rbnext) ++n;
        return n;
    }
    const resbuf* cursor;

private:
    resbuf* m_head;
};

} // namespace

TEST(LispArguments, NumbersConvertTowardsZeroAndBack) {
    Chain c(
        acutBuildList(RTREAL, 2.9, RTREAL, -2.9, RTSHORT, 3, RTLONG, 70000, RTREAL, 1e300, RTSTR, "x", 0));
    Adesk::Int32 i = 0;
    double d = 0.0;
    EXPECT_TRUE(argInt(c.cursor, i) && i == 2);
    EXPECT_TRUE(argInt(c.cursor, i) && i == -2);
    EXPECT_FALSE(argRealStrict(c.cursor, d));
    EXPECT_TRUE(argReal(c.cursor, d) && d == 3.0);
    EXPECT_TRUE(argInt(c.cursor, i) && i == 70000);
    EXPECT_TRUE(argInt(c.cursor, i) && i == 2147483647);
    EXPECT_FALSE(argReal(c.cursor, d));
    EXPECT_EQ(c.position(), 5) << "a failing reader stays";
}

TEST(LispArguments, EveryReaderFailsAtTheEndAndStays) {
    const resbuf* end = nullptr;
    AcDbObjectId id;
    Adesk::Int32 i = 7;
    double d = 7.0;
    CString text = "kept";
    bool flag = true;
    AcGePoint3d p3;
    AcGePoint2d p2;
    EXPECT_FALSE(argObjectId(end, id) || argInt(end, i) || argRealStrict(end, d) || argReal(end, d) ||
                 argText(end, text) || argBool(end, flag) || argPoint(end, p3) || argPoint2d(end, p2) ||
                 argListBegin(end) || argListEnd(end) || argPair(end, text, i));
    argSkip(end);
    EXPECT_EQ(end, nullptr);
    EXPECT_TRUE(i == 7 && d == 7.0 && text == "kept" && flag);
}

TEST(LispArguments, BooleansTakeAnythingButLists) {
    Chain c(acutBuildList(RTNIL, RTT, RTREAL, 0.0, RTSTR, "", RTLE, RTLB, 0));
    bool flag = true;
    EXPECT_TRUE(argBool(c.cursor, flag) && !flag);
    for (int item = 0; item < 3; ++item) EXPECT_TRUE(argBool(c.cursor, flag) && flag) << item;
    EXPECT_TRUE(argBool(c.cursor, flag) && !flag);
    EXPECT_TRUE(argBool(c.cursor, flag) && !flag) << "the end of a list is seen again";
    EXPECT_TRUE(argListEnd(c.cursor));
    EXPECT_FALSE(argBool(c.cursor, flag));
    EXPECT_EQ(c.position(), 5);
}

TEST(LispArguments, PointsComeWholeOrInNumbers) {
    const double xyz[3] = {1.0, 2.0, 3.0};
    AcGePoint3d p;
    AcGePoint2d q;
    {
        Chain c(acutBuildList(RT3DPOINT, xyz, RTPOINT, xyz, RTSHORT, 1, RTREAL, 2.0, RTSTR, "x", 0));
        EXPECT_TRUE(argPoint(c.cursor, p) && pointText(p) == "1,2,3");
        EXPECT_TRUE(argPoint(c.cursor, p) && pointText(p) == "1,2,0");
        const resbuf* numbers = c.cursor;
        EXPECT_FALSE(argPoint2d(numbers, q)) << "two dimensions take reals alone";
        EXPECT_TRUE(argPoint(c.cursor, p) && pointText(p) == "1,2,0");
        EXPECT_EQ(c.position(), 4) << "stops at the text";
        EXPECT_FALSE(argPoint(c.cursor, p));
    }
    Chain c(acutBuildList(RTLONG, 1, RTREAL, 2.0, RTSHORT, 3, RTREAL, 4.0, RTREAL, 5.0, RTREAL, 6.0, 0));
    EXPECT_TRUE(argPoint(c.cursor, p) && pointText(p) == "1,2,3");
    EXPECT_TRUE(argPoint2d(c.cursor, q) && q.x == 4.0 && q.y == 5.0);
    EXPECT_FALSE(argPoint(c.cursor, p)) << "one number is no point";
    EXPECT_EQ(c.position(), 5);
}

TEST(LispArguments, PairsEndWithTheirDot) {
    CString key;
    Adesk::Int32 value = 0;
    Chain good(acutBuildList(RTLB, RTSTR, "a", RTREAL, 4.7, RTDOTE, RTT, 0));
    EXPECT_TRUE(argPair(good.cursor, key, value) && key == "a" && value == 4);
    EXPECT_EQ(good.position(), 4);
    resbuf* const wrong[] = {acutBuildList(RTLB, RTSTR, "b", RTSHORT, 1, RTLE, 0),
                             acutBuildList(RTLB, RTSTR, "b", RTSTR, "1", RTDOTE, 0),
                             acutBuildList(RTLB, RTSTR, "b", 0),
                             acutBuildList(RTSTR, "b", RTSHORT, 1, RTDOTE, 0)};
    for (resbuf* head : wrong) {
        Chain c(head);
        EXPECT_FALSE(argPair(c.cursor, key, value));
        EXPECT_EQ(c.position(), 0);
    }
    EXPECT_TRUE(key == "a" && value == 4);
}

// As Lisp delivers them.
class LispArgumentsFromLisp : public ModuleTest {};

TEST_F(LispArgumentsFromLisp, MissingAndWrongArgumentsAreTold) {
    EXPECT_EQ(lisp("(vq_plumb-insertPipe 1 '(0 0 0))"), "error: ADS request error");
    EXPECT_EQ(takePrinted(), "\nWrong type of arguments passed.\n");
    EXPECT_EQ(lisp("(entlast)"), "nil");
    EXPECT_EQ(lisp("(vq_plumb-setPipeInfo \"no entity\")"), "error: ADS request error");
    takePrinted();
    lisp("(setq e (vq_plumb-insertPipe 1 '(0 0 0) '(9 0 0)))");
    lisp("(entdel e)");
    EXPECT_EQ(lisp("(vq_plumb-setPipeInfo e '(\"DWG\" \"x\"))"), "nil");
    EXPECT_EQ(takePrinted(), "") << "an erased pipe is no error";
}
