// Ctrl-C: the process-wide interrupt flag and the SIGINT handler `QZcheckuserbreak`.
//
// The handler is in place while a top-level solve runs (and from QZresetctrlc on, when the
// host asks for it early); when the last solve ends, the disposition the host had comes back,
// so outside solves Ctrl-C does what the host's program does. A host that ignores SIGINT keeps
// ignoring it. A second Ctrl-C while the first is still pending goes to the host's previous
// handler, so that a program stuck elsewhere can still be stopped.
#include <signal.h>

#include <atomic>
#include <mutex>

#include "core/callbacks.h"

namespace zento {

namespace {

static_assert(std::atomic<int>::is_always_lock_free, "the Ctrl-C flag is set from a handler");
std::atomic<int> g_ctrlc{0};

struct HandlerState {
  std::mutex mutex;
  int scopes = 0;                // top-level solves under way
  struct sigaction previous {};  // written only while our handler is not in place
};

HandlerState g_handler;

extern "C" void QZcheckuserbreak(int sig, siginfo_t* info, void* context) {
  if (g_ctrlc.exchange(1) == 0) return;
  const struct sigaction& prev = g_handler.previous;
  if (prev.sa_flags & SA_SIGINFO) {
    if (prev.sa_sigaction != nullptr) prev.sa_sigaction(sig, info, context);
  } else if (prev.sa_handler == SIG_DFL) {
    sigaction(SIGINT, &prev, nullptr);
    raise(sig);
  } else if (prev.sa_handler != SIG_IGN && prev.sa_handler != nullptr) {
    prev.sa_handler(sig);
  }
}

// The disposition in force, and whether it is ours (the host may have replaced it).
bool ours_in_place(struct sigaction& cur) {
  if (sigaction(SIGINT, nullptr, &cur) != 0) return false;
  return (cur.sa_flags & SA_SIGINFO) && cur.sa_sigaction == QZcheckuserbreak;
}

void install_locked() {
  struct sigaction cur {};
  if (ours_in_place(cur)) return;
  struct sigaction act {};
  act.sa_sigaction = QZcheckuserbreak;
  sigemptyset(&act.sa_mask);
  act.sa_flags = SA_SIGINFO | SA_RESTART;
  sigaction(SIGINT, &act, &g_handler.previous);
}

void uninstall_locked() {
  struct sigaction cur {};
  if (ours_in_place(cur)) sigaction(SIGINT, &g_handler.previous, nullptr);
}

}  // namespace

bool ctrlc_pending() { return g_ctrlc.load(std::memory_order_relaxed) != 0; }

void interrupt_scope_enter() {
  std::lock_guard<std::mutex> lock(g_handler.mutex);
  ++g_handler.scopes;
  struct sigaction cur {};
  if (ours_in_place(cur)) return;
  const bool ignored = !(cur.sa_flags & SA_SIGINFO) && cur.sa_handler == SIG_IGN;
  if (!ignored) install_locked();
}

void interrupt_scope_leave() {
  std::lock_guard<std::mutex> lock(g_handler.mutex);
  if (g_handler.scopes > 0) --g_handler.scopes;
  if (g_handler.scopes > 0) return;
  g_ctrlc.store(0);
  uninstall_locked();
}

}  // namespace zento

extern "C" {

int QZresetctrlc(void) {
  using namespace zento;
  std::lock_guard<std::mutex> lock(g_handler.mutex);
  g_ctrlc.store(0);
  install_locked();
  return 0;
}

int QZcheckctrlc(void) { return zento::ctrlc_pending() ? 1 : 0; }

}  // extern "C"
