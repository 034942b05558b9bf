// Tests of the interpreter state what a form gives on the same line:
//
//     expectLisp({{"(+ 1 2)", "3"}, {"(car 5)", "error: bad argument type: listp 5"}});
#pragma once

#include "lisp/Engine.h"
#include "lisp/Heap.h"
#include "lisp/Printer.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <map>
#include <string>

namespace veldrin::lisp {

// Keeps what is printed, and serves settings and variables from maps.
class TestServices : public Services {
public:
    void print(std::string_view text) override { printed += text; }
    std::optional<std::string> readLine() override { return typed; }
    Value systemVariable(std::string_view name) override {
        const auto it = variables.find(name);
        return it == variables.end() ? Services::systemVariable(name) : it->second;
    }

    std::string printed;
    std::optional<std::string> typed;
    std::map<std::string, Value, std::less<>> variables;
};

class LispTest : public testing::Test {
protected:
    struct Row {
        const char* form;
        const char* expected;
    };

    LispTest() { engine.setServices(&services); }

    std::string give(std::string_view text) {
        const Outcome outcome = engine.runText(text);
        if (outcome) return prin1Text(outcome.value);
        return outcome.error ? "error: " + outcome.error->message
                             : "quit " + std::to_string(outcome.exitStatus);
    }
    void expectLisp(std::initializer_list<Row> rows) {
        for (const Row& row : rows) EXPECT_EQ(give(row.form), row.expected) << row.form;
    }

    TestServices services;
    Engine engine;
};

} // namespace veldrin::lisp
