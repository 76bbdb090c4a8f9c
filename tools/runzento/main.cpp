// runzento: the command-line solver, written against the public C interface only.
#include <cstdio>
#include <cstring>
#include <string>

#include "zento.h"

namespace {

void print_version() {
  char version[64], build[512];
  QZgetVersionInfo(version, build);
  std::printf("runzento %s\n%s\n", version, build);
}

void print_help() {
  std::printf(
      "Usage: runzento [options] [model-file]\n"
      "\n"
      "Options:\n"
      "  --version        print the library version and exit\n"
      "  --help           print this help and exit\n"
      "\n"
      "Exit codes: 0 success, 1 bad usage, 2 library error.\n");
}

}  // namespace

int main(int argc, char** argv) {
  std::string file;
  for (int i = 1; i < argc; ++i) {
    const char* a = argv[i];
    if (!std::strcmp(a, "--version") || !std::strcmp(a, "-v")) {
      print_version();
      return 0;
    }
    if (!std::strcmp(a, "--help") || !std::strcmp(a, "-h")) {
      print_help();
      return 0;
    }
    if (a[0] == '-') {
      std::fprintf(stderr, "runzento: unknown option %s\n", a);
      return 1;
    }
    file = a;
  }
  if (file.empty()) {
    print_help();
    return 1;
  }
  int rc = 0;
  QZenv env = QZcreateEnv(&rc);
  if (env == nullptr) {
    std::fprintf(stderr, "runzento: cannot create environment (error %d)\n", rc);
    return 2;
  }
  char msg[1024];
  QZgetErrorMessage(env, QZERR_NOT_SUPPORTED, msg);
  std::fprintf(stderr, "runzento: reading model files is not available in this build: %s\n", msg);
  QZdeleteEnv(&env);
  return 2;
}
