#pragma once

namespace plumb {

class vqPlumbContext;

// What a handler of a Lisp function answers. Any other number counts as done.
enum HandlerStatus : int {
    kDone = 0, // the result is set, or stays nil
    kTooFewArguments = 1,
    kWrongType = 2,
    kBadData = 3,
    kTextScreen = 4, // show the text screen
};

using Handler = int (*)();

// Tells the user of a failure and gives the host's code for a status.
int hostCodeOf(int status);

// Runs a handler with the document locked, and gives the host's code. With a context the current document's
// project is connected first; without one that connects, or without a document, the call gives nil. What the
// handler throws is told on the command line and goes on to the host.
int runInFrame(Handler handler, vqPlumbContext* context);

} // namespace plumb
