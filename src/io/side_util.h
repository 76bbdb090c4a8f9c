// Small pieces shared by the side-file readers and writers.
#pragma once

#include <string>
#include <vector>

#include "core/model.h"
#include "io/line_reader.h"

namespace zento::io {

// Texts of the basis statuses: basic (0 and above), at lower, at upper, free at zero,
// superbasic.
const char* basis_status_text(int status);
// The status of a text, or false for an unknown text.
bool basis_status_of(const char* text, int* status);

// Words of a line split at blanks and tabs.
std::vector<std::string> split_line(const RawLine& raw);
// The first non-blank byte of a line, or 0.
char first_byte(const RawLine& raw);

// Notes the line a side-file read failed at, for QZgetFileError.
void note_file_error(Imodel& m, const LineReader& lines, const RawLine& raw);
void clear_file_error(Imodel& m);

// Current local date as yyyymmdd and seconds since midnight.
void date_stamp(int* yyyymmdd, double* seconds);

// The index of a column or row name: the model's names, or, when it has none, the default
// names of the writers, "C<n>" and "R<n>" with n counted from `base`.
int column_by_name(Imodel& m, const std::string& name, int* index, int base);
int row_by_name(Imodel& m, const std::string& name, int* index, int base);

}  // namespace zento::io
