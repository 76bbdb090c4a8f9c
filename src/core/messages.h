// The message table: one text per error code, built in and replaceable from "qzerr.txt".
#pragma once

#include <cstdio>
#include <string>
#include <vector>

#include "zento.h"

namespace zento {

inline constexpr int kMessageSlots = 2752;
// Longest text kept from a message file, so that a QZ_MAX_ERROR_MESSAGE_LENGTH buffer holds it.
inline constexpr int kMessageMaxText = QZ_MAX_ERROR_MESSAGE_LENGTH - 1;

// Texts packed one after another, each ending in a zero byte; index -1 means no text.
struct MessageTable {
  std::string pool;
  std::vector<int> index;
};

// Built-in texts, then the records of the file at `path` when it opens.
int load_message_table(MessageTable& table, const std::string& path);
int load_message_table(QZenv env, const std::string& path);
// Text of a code, or nullptr when the code has none.
const char* message_text(const MessageTable& table, int code);
const char* message_text(QZenv env, int code);
// Built-in text of a code, or nullptr.
const char* builtin_message_text(int code);
// Where the environment looks for the message file: $CZENTO/qzerr.txt, else ./qzerr.txt.
std::string message_file_path();

// Records of a message file in order: record k is the text of code k. Reading ends at the
// end of the stream, at a record that is not closed, or after kMessageSlots records.
std::vector<std::string> read_message_records(std::FILE* in);

}  // namespace zento
