// The signals that ask a program to end: SIGINT (Ctrl-C), SIGTERM and SIGHUP (its terminal has gone).
#pragma once

namespace zorvel {

// Has `handler` called when the first of them arrives, inside the signal's handler: it may do what is safe
// there. A second one, of any of the three, ends the program at once. SIGHUP stays ignored in a program that
// was started so (nohup). To be called once.
void OnEndingSignal(void (*handler)());

}  // namespace zorvel
