#include "editor/CommandLine.h"
#include "platform/editor/HostTest.h"
#include "runtime/acut.h"

using veldrin::CommandLine;

namespace {

class CommandLineTest : public HostTest {
protected:
    CommandLine& line() { return host->commandLine(); }
};

TEST_F(CommandLineTest, textOfAnyLengthArrivesAsItIs) {
    const std::string longText(100'000, 'x');
    EXPECT_EQ(acutPrintf("\n%s %d", longText.c_str(), 5), 100'003);
    EXPECT_EQ(takePrinted(), "\n" + longText + " 5");
    EXPECT_EQ(acutPrintf("%s", ""), 0);
    lisp("(princ \"caf\xC3\xA9\")");
    EXPECT_EQ(takePrinted(), "caf\xC3\xA9");
}

TEST_F(CommandLineTest, capturesNestAndLeaveTheLineAsItWas) {
    line().print("ab");
    {
        const CommandLine::Capture outer(line());
        line().freshLine();
        line().print("one");
        {
            const CommandLine::Capture inner(line());
            line().print("two");
            EXPECT_EQ(inner.text(), "two");
        }
        line().print("three");
        EXPECT_EQ(outer.text(), "onethree");
    }
    EXPECT_EQ(line().column(), 2);
    EXPECT_EQ(line().lastLine(), "ab");
    line().freshLine();
    line().freshLine();
    EXPECT_EQ(takePrinted(), "ab\n");
}

TEST_F(CommandLineTest, theLastLineIsKnown) {
    const std::pair<std::vector<std::string>, std::string> cases[] = {
        {{"one\ntwo"}, "two"},  {{"one\ntwo\n"}, "two"},         {{"one\n", "two"}, "two"},
        {{"o", "ne\n"}, "one"}, {{"one", "\ntwo", "!"}, "two!"}, {{"50%\r60%"}, "60%"},
    };
    for (const auto& [texts, last] : cases) {
        for (const std::string& text : texts) line().print(text);
        EXPECT_EQ(line().lastLine(), last);
        line().freshLine();
    }
    line().print("\xC3\xA9t\xC3\xA9");
    EXPECT_EQ(line().column(), 3);
}

TEST_F(CommandLineTest, promptsStartALineAndInputEndsIt) {
    std::vector<std::string> typed{"5", "6"};
    line().setLineSource([&](const std::string& prompt) -> std::optional<std::string> {
        printed += prompt;
        if (typed.empty()) return std::nullopt;
        const std::string text = typed.front();
        typed.erase(typed.begin());
        return text;
    });
    line().print("done.");
    EXPECT_EQ(line().readLine("Radius: "), "5");
    EXPECT_EQ(takePrinted(), "done.\nRadius: ");
    EXPECT_EQ(line().readLine("Radius: "), "6");
    EXPECT_EQ(takePrinted(), "Radius: ");
    EXPECT_EQ(line().lastLine(), "Radius: 6");
    EXPECT_EQ(line().readLine(), std::nullopt);
}

} // namespace
