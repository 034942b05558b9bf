#include "runtime/Host.h"
#include "scripting/Scripting.h"
#include "scripting/tables.h"

namespace veldrin::scripting {

void install(Host& host) {
    lisp::Engine& lisp = host.lisp();
    for (const auto rows :
         {entityFunctions(), selectionFunctions(), tableFunctions(), dictionaryFunctions(),
          commandFunctions(), inputFunctions(), variableFunctions(), curveFunctions(), documentFunctions(),
          projectFunctions(), graphicsFunctions(), recordFunctions(), editingFunctions(), windowFunctions(),
          dialogFunctions(), gridFunctions(), screenFunctions(), moduleFunctions()})
        lisp.define(rows);
    defineTableWalk(lisp);
    defineDictionaryWalk(lisp);
    defineEntityMaking(lisp);
    lisp.set("PAUSE", lisp::Value::text("\\")); // as an argument of a command: the user's turn
}

} // namespace veldrin::scripting
