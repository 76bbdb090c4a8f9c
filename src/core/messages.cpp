// The message table: built-in texts, replaced record by record from "qzerr.txt".
#include "core/messages.h"

#include <cstdlib>

#include "core/env.h"

namespace zento {

namespace {

struct MessageRow {
  int code;
  const char* name;
  const char* text;
};

constexpr MessageRow kMessages[] = {
#include "core/messages_table.inc"
};

constexpr int kMessageSlots = 2752;

}  // namespace

std::string message_file_path() {
  const char* dir = std::getenv("CZENTO");
  if (dir == nullptr) return "qzerr.txt";
  return std::string(dir) + "/qzerr.txt";
}

int load_message_table(QZenv env, const std::string& /*path*/) {
  env->msgIndex.assign(kMessageSlots, -1);
  env->msgPool.clear();
  env->msgPool.reserve(20000);
  for (const MessageRow& row : kMessages) {
    env->msgIndex[row.code] = static_cast<int>(env->msgPool.size());
    env->msgPool.append(row.text);
    env->msgPool.push_back('\0');
  }
  return 0;
}

const char* message_text(QZenv env, int code) {
  if (env == nullptr || code < 0 || code >= static_cast<int>(env->msgIndex.size())) return nullptr;
  const int pos = env->msgIndex[code];
  return pos < 0 ? nullptr : env->msgPool.c_str() + pos;
}

}  // namespace zento
