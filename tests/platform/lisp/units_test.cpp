#include "platform/lisp/LispTest.h"

namespace veldrin::lisp {

using Units = LispTest;

TEST_F(Units, lengthsInAllNotations) {
    expectLisp({
        {"(rtos 17.5 1 2)", "\"1.75E+01\""},
        {"(rtos 17.5 2 2)", "\"17.50\""},
        {"(rtos 17.5 3 2)", "\"1'-5.50\\\"\""},
        {"(rtos 17.5 4 2)", "\"1'-5 1/2\\\"\""},
        {"(rtos 17.5 5 2)", "\"17 1/2\""},
        {"(rtos -17.5 4 2)", "\"-1'-5 1/2\\\"\""},
        {"(rtos 11.99 4 4)", "\"1'\""}, // a fraction that rounds up to the next foot
        {"(rtos 11.999 3 2)", "\"1'\""},
        {"(rtos 0.375 4 4)", "\"3/8\\\"\""},
        {"(rtos 12.375 4 4)", "\"1'-0 3/8\\\"\""},
        {"(rtos 0 4 4)", "\"0\\\"\""},
        {"(rtos 0.125 2 2)", "\"0.13\""},
        {"(rtos 2.675 2 2)", "\"2.68\""},
        {"(rtos -0.001 2 2)", "\"0.00\""},
        {"(rtos 1.5)", "\"1.5000\""},
        {"(rtos 1 7 2)", "error: bad argument value: 7"},
        {"(rtos \"x\")", "error: bad argument type: numberp: \"x\""},
    });
}

TEST_F(Units, zerosAreDroppedAsAsked) {
    services.variables["DIMZIN"] = Value::integer(8);
    expectLisp(
        {{"(rtos 17.50 2 4)", "\"17.5\""}, {"(rtos 17 2 4)", "\"17\""}, {"(rtos 100 2 0)", "\"100\""}});
    services.variables["DIMZIN"] = Value::integer(12);
    expectLisp({{"(rtos -0.50 2 4)", "\"-.5\""}, {"(rtos 0.0 2 4)", "\"0\""}});
    services.variables["DIMZIN"] = Value::integer(1);
    expectLisp({{"(rtos 0.5 4 4)", "\"0'-0 1/2\\\"\""}, {"(rtos 12 4 4)", "\"1'-0\\\"\""}});
    services.variables["DIMZIN"] = Value::integer(2);
    expectLisp({{"(rtos 12 4 4)", "\"1'\""}, {"(rtos 6 4 4)", "\"0'-6\\\"\""}});
    services.variables["DIMZIN"] = Value::integer(3);
    expectLisp({{"(rtos 12 4 4)", "\"1'-0\\\"\""}, {"(rtos 6 4 4)", "\"6\\\"\""}});
}

TEST_F(Units, anglesInAllNotations) {
    expectLisp({
        {"(angtos (/ pi 4) 0 2)", "\"45.00\""},
        {"(angtos (- (/ pi 4)) 0 0)", "\"315\""},
        {"(angtos 0.7942 1 4)", "\"45d30'16\\\"\""},
        {"(angtos (/ pi 4) 1 2)", "\"45d0'\""},
        {"(angtos (/ (* 45.9999999 pi) 180) 1 4)", "\"46d0'0\\\"\""}, // never 45d59'60"
        {"(angtos pi 2 1)", "\"200.0g\""},
        {"(angtos 1 3 4)", "\"1.0000r\""},
        {"(angtos (/ pi 4) 4 4)", "\"N 45d0'0\\\" E\""},
        {"(angtos (* 1.75 pi) 4 0)", "\"S 45d E\""},
        {"(angtos (/ pi 2) 4 4)", "\"N\""},
        {"(angtos (* 2 pi 0.9999999) 0 2)", "\"0.00\""},
    });
    services.variables["ANGBASE"] = Value::real(1.5707963267948966);
    services.variables["ANGDIR"] = Value::integer(1);
    expectLisp({{"(angtos 0 0 0)", "\"90\""}, {"(angtof \"90\" 0)", "0.0"}});
}

TEST_F(Units, textsBecomeLengthsAndAngles) {
    expectLisp({
        {"(mapcar 'distof '(\"17.5\" \"1'-5 1/2\\\"\" \"1'5.5\" \"17 1/2\" \"-1/2\" \"1'\" \"1.75e1\"))",
         "(17.5 17.5 17.5 17.5 -0.5 12.0 17.5)"},
        {"(mapcar 'distof '(\"\" \"abc\" \"1'x\" \"1/0\" \"5 6\"))", "(nil nil nil nil nil)"},
        {"(mapcar '(lambda (s) (angtos (angtof s) 0 4)) '(\"45.5\" \"45d30'\" \"45d30'18\\\"\" \"50g\" "
         "\"1r\" \"N 45d E\"))",
         "(\"45.5000\" \"45.5000\" \"45.5050\" \"45.0000\" \"57.2958\" \"45.0000\")"},
        {"(mapcar 'angtof '(\"\" \"x\" \"45q\"))", "(nil nil nil)"},
        {"(cvunit 1 \"inch\" \"mm\")", "25.4"},
        {"(cvunit '(1 2) \"ft\" \"in\")", "(12.0 24.0)"},
        {"(cvunit 212 \"fahrenheit\" \"celsius\")", "100.0"},
        {"(cvunit 1 \"inch\" \"pound\")", "nil"},
    });
}

} // namespace veldrin::lisp
