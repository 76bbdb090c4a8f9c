// The message table: built-in texts, replaced record by record from "qzerr.txt".
#include "core/messages.h"

#include <cstdlib>
#include <memory>

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

struct FileCloser {
  void operator()(std::FILE* f) const { std::fclose(f); }
};

void pack(MessageTable& table, const std::vector<const std::string*>& texts) {
  table.index.assign(kMessageSlots, -1);
  table.pool.clear();
  size_t need = 0;
  for (const std::string* t : texts)
    if (t) need += t->size() + 1;
  table.pool.reserve(need);
  for (int code = 0; code < kMessageSlots; ++code) {
    const std::string* t = texts[static_cast<size_t>(code)];
    if (t == nullptr) continue;
    table.index[static_cast<size_t>(code)] = static_cast<int>(table.pool.size());
    table.pool.append(*t);
    table.pool.push_back('\0');
  }
}

}  // namespace

std::string message_file_path() {
  const char* dir = std::getenv("CZENTO");
  if (dir == nullptr || *dir == '\0') return "qzerr.txt";
  return std::string(dir) + "/qzerr.txt";
}

std::vector<std::string> read_message_records(std::FILE* in) {
  std::vector<std::string> records;
  enum class State { kSeekOpen, kNumber, kSeekQuote, kText, kSeekClose };
  State state = State::kSeekOpen;
  std::string text;
  int c;
  while (records.size() < static_cast<size_t>(kMessageSlots) && (c = std::getc(in)) != EOF) {
    switch (state) {
      case State::kSeekOpen:
        if (c == '{') state = State::kNumber;
        break;
      case State::kNumber:
        if (c == ',') state = State::kSeekQuote;
        if (c == '}') return records;  // a record without its text ends the file
        break;
      case State::kSeekQuote:
        if (c == '"') {
          text.clear();
          state = State::kText;
        }
        if (c == '}') return records;
        break;
      case State::kText:
        if (c == '"')
          state = State::kSeekClose;
        else if (static_cast<int>(text.size()) < kMessageMaxText)
          text.push_back(static_cast<char>(c));
        break;
      case State::kSeekClose:
        if (c == '}') {
          records.push_back(text);
          state = State::kSeekOpen;
        }
        break;
    }
  }
  return records;
}

const char* builtin_message_text(int code) {
  for (const MessageRow& row : kMessages)
    if (row.code == code) return row.text;
  return nullptr;
}

int load_message_table(MessageTable& table, const std::string& path) {
  std::vector<std::string> builtin(kMessageSlots);
  std::vector<const std::string*> texts(kMessageSlots, nullptr);
  for (const MessageRow& row : kMessages) {
    builtin[static_cast<size_t>(row.code)] = row.text;
    texts[static_cast<size_t>(row.code)] = &builtin[static_cast<size_t>(row.code)];
  }
  std::vector<std::string> records;
  if (std::unique_ptr<std::FILE, FileCloser> in{std::fopen(path.c_str(), "rb")}) {
    records = read_message_records(in.get());
  }
  for (size_t k = 0; k < records.size(); ++k) texts[k] = &records[k];
  pack(table, texts);
  return 0;
}

int load_message_table(QZenv env, const std::string& path) {
  MessageTable table;
  const int rc = load_message_table(table, path);
  if (rc != 0) return rc;
  env->msgPool = std::move(table.pool);
  env->msgIndex = std::move(table.index);
  return 0;
}

const char* message_text(const MessageTable& table, int code) {
  if (code < 0 || code >= static_cast<int>(table.index.size())) return nullptr;
  const int pos = table.index[static_cast<size_t>(code)];
  return pos < 0 ? nullptr : table.pool.c_str() + pos;
}

const char* message_text(QZenv env, int code) {
  if (env == nullptr || code < 0 || code >= static_cast<int>(env->msgIndex.size())) return nullptr;
  const int pos = env->msgIndex[static_cast<size_t>(code)];
  return pos < 0 ? nullptr : env->msgPool.c_str() + pos;
}

}  // namespace zento
