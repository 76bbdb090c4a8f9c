// Information keys: the name table `key_lookup`, the readers behind QZgetInfo, the final and
// callback forms, and the formatted report rows.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "core/model.h"

namespace zento {

// One row of `key_lookup`: a key and its macro name (at most 60 characters).
struct KeyRow {
  int key;
  const char* name;
};
inline constexpr int kKeyNameWidth = 60;

std::span<const KeyRow> key_lookup();
enum class KeyType { kUnknown, kInt, kDouble, kString };
// The type follows the macro name: QZ_IINFO_ int, QZ_DINFO_ double, QZ_SINFO_ string.
KeyType key_type(int key);
KeyType key_type_of_name(std::string_view name);
const char* key_name(int key);
// The key of a macro name, compared on its first 60 characters; -1 when unknown.
int key_by_name(std::string_view name);

// A value read for a key: numbers travel as doubles (integral counts are exact in a double),
// strings as text.
struct InfoValue {
  double num = 0;
  std::string str;
};

// Reads a key of a model; 0 or QZERR_INFO_NOT_AVAILABLE.
int read_info(Imodel& m, int key, InfoValue& v);
// The keys that answer without a model: versions, platform, model-type text.
int read_info_without_model(int key, InfoValue& v);
// Keys 11700..11713: the best figures of whichever solver ran last (global, MIP, else LP/NLP).
int read_final_info(Imodel& m, int key, InfoValue& v);
// Families of the records of each solver.
int read_model_key(Imodel& m, int key, InfoValue& v);
int read_sol_key(Imodel& m, int key, InfoValue& v);
int read_mip_key(Imodel& m, int key, InfoValue& v);
int read_gop_key(Imodel& m, int key, InfoValue& v);

// Writes a value into the host's result as the key's type.
int put_info(int key, const InfoValue& v, void* pvResult);

// The bodies of the public entries.
int get_info(Imodel* m, int key, void* pvResult);
int get_final_info(Imodel* m, int key, void* pvResult);
int get_callback_info(Imodel* m, int nLocation, int key, void* pvResult);
int get_mip_callback_info(Imodel* m, int key, void* pvResult);
int get_quickback_info(Imodel* m, int nLocation, int key, void* pvResult);
int get_formatted_info(Imodel* m, const char* szFormatFile, char* szHeader, char* szData,
                       int nSelector);

// Renders rows of a format table into a header and a data line (exposed for tests).
struct FmtRow {
  std::string name, label, fmt, fmtSql;
};
int format_rows(Imodel& m, std::span<const FmtRow> rows, std::string& header,
                std::string& data);
// Parses a format file; 0, QZERR_CANNOT_OPEN_FILE, QZERR_INTERNAL_ERROR (a fourth token on a
// line) or QZERR_ERROR_IN_INPUT (a line with fewer than three tokens).
int read_format_file(const char* path, std::vector<FmtRow>& rows);
// Checks that `fmt` holds exactly one conversion fit for the type; returns its position.
bool check_value_format(std::string_view fmt, KeyType type);

}  // namespace zento
