#pragma once

#include "lisp/Engine.h"
#include "runtime/Host.h"

#include <string>
#include <string_view>
#include <vector>

// A host for one run of the program: what is printed goes to standard output, what is typed comes from
// standard input, the module and the Lisp layer are loaded.
class Session {
public:
    struct Options {
        bool bare = false;                  // neither module nor Lisp layer
        std::string drawing;                // to be opened or made; empty: a new unnamed one
        std::vector<std::string> arguments; // of the script
        bool onlyLooks = false;             // at the drawing, whoever has it open
    };

    Session();
    ~Session();

    // False, with the reason on standard error, when something of it cannot be had.
    bool start(const Options& options);
    veldrin::Host& host() { return m_host; }

    // False, with the reason on standard error.
    bool canRead(const std::string& path);
    // Runs a script file. False for one that cannot be read, with the reason on standard error; its errors
    // are in the outcome.
    bool runScript(const std::string& path, veldrin::lisp::Outcome& outcome);
    // Makes the drawing of that name, or the one that the script of that name draws, the current one. What
    // comes is the exit status; goOn says whether there is a drawing to work on.
    int prepare(const std::string& drawingOrScript, bool& goOn);

    // The exit status of a run; tells what went wrong.
    int statusOf(const veldrin::lisp::Outcome& outcome);
    // The status after everything printed has arrived: another one when it could not be written.
    int finish(int status);

    // One line on standard error, behind what was printed before.
    void tell(std::string_view message);

private:
    bool openDrawing(const std::string& path, bool onlyLooks);
    bool loadModule();
    bool loadLispLayer();
    void makeInstalledKeys();

    veldrin::Host m_host;
};

// The text of a system error.
std::string reasonOf(int error);
