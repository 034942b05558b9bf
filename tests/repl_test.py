"""The prompt as a person meets it: typed into a terminal, with editing, completion and Ctrl+C.

    python3 repl_test.py build/release/veldrin
"""

import os
import pty
import re
import select
import sys
import time

PROMPT = "Command: "
PATIENCE = 30.0  # seconds; sanitizers are slow, a prompt that never comes is the failure


class Terminal:
    def __init__(self, program):
        self.child, self.screen = pty.fork()
        if self.child == 0:
            os.environ["TERM"] = "dumb"
            os.execv(program, [program, "repl", "--bare"])
        self.seen = ""

    def type(self, keys):
        os.write(self.screen, keys.encode())

    def wait_for(self, pattern):
        """What came up to and with the pattern; later calls go on behind it."""
        end = time.monotonic() + PATIENCE
        while not (found := re.search(pattern, self.seen)):
            if time.monotonic() > end:
                sys.exit(f"waited in vain for {pattern!r}; the screen shows:\n{self.seen}")
            if select.select([self.screen], [], [], 0.2)[0]:
                try:
                    self.seen += os.read(self.screen, 4096).decode(errors="replace")
                except OSError:  # the program has ended
                    sys.exit(f"ended before {pattern!r}:\n{self.seen}")
        text, self.seen = self.seen[: found.end()], self.seen[found.end():]
        return text

    def status(self):
        while True:
            try:
                if not os.read(self.screen, 4096):
                    break
            except OSError:
                break
        return os.waitstatus_to_exitcode(os.waitpid(self.child, 0)[1])


def main():
    terminal = Terminal(sys.argv[1])
    terminal.wait_for(PROMPT)

    terminal.type("(+ 40 2)\n")
    terminal.wait_for(r"\n42\r?\n")

    # A form over several lines.
    terminal.wait_for(PROMPT)
    terminal.type("(setq a-name-to-complete\n")
    terminal.wait_for("_> ")
    terminal.type("7)\n")
    terminal.wait_for(r"\n7\r?\n")

    # Tab completes names in forms, and commands at the line's beginning.
    terminal.wait_for(PROMPT)
    terminal.type("(1+ a-name-to\t)\n")
    terminal.wait_for(r"\n8\r?\n")
    terminal.wait_for(PROMPT)
    terminal.type("REGE\t\n")
    terminal.wait_for("REGEN")
    terminal.wait_for(PROMPT)

    # Ctrl+C ends what runs for ever and leaves the prompt.
    terminal.type("(while T)\n")
    time.sleep(0.5)
    terminal.type("\x03")
    terminal.wait_for("Function cancelled")
    terminal.wait_for(PROMPT)

    # An error is told, and the next form works.
    terminal.type("(car 5)\n")
    terminal.wait_for("bad argument type: listp 5")
    terminal.wait_for(PROMPT)
    terminal.type("(quit 3)\n")
    if (status := terminal.status()) != 3:
        sys.exit(f"ended with {status} instead of 3")


if __name__ == "__main__":
    main()
