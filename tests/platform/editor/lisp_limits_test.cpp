#include "platform/editor/HostTest.h"
#include "system/UserSettings.h"

using LispLimitsTest = HostTest;

// What a user has set holds from the next start on; what would leave no room to work in does not.
TEST_F(LispLimitsTest, comeFromTheUsersSettings) {
    const char* const recursion = "(progn (defun f (n) (if (zerop n) 0 (1+ (f (1- n))))) (f 20000))";
    EXPECT_EQ(lisp(recursion), "20000");
    constexpr const char* kKey = R"(Software\Veldrin Software\Lisp)";
    host->settings().createKey(kKey);
    const auto restartedWith = [&](const char* name, std::int32_t value) {
        host->settings().write(kKey, name, value);
        host.reset();
        host = std::make_unique<veldrin::Host>();
        return lisp(recursion);
    };
    EXPECT_EQ(restartedWith("CallDepth", 500).substr(0, 6), "error:");
    EXPECT_EQ(lisp("(f 400)"), "400");
    EXPECT_EQ(restartedWith("CallDepth", -1), "20000");
    EXPECT_EQ(restartedWith("HeapMegabytes", 16), "20000");
    EXPECT_EQ(lisp("(progn (setq l nil) (while T (setq l (cons 1 l))))").substr(0, 6), "error:");
    EXPECT_EQ(lisp("(progn (setq l nil) (+ 1 2))"), "3");
}
