// suite_shell: stands in for the suite's main shell, which must be running
// for the till to start. It does nothing but wait until it is stopped.
#include <unistd.h>

int main() {
    for (;;) pause();
}
