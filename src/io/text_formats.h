// Entries of the LP and ZENTO text formats and of the MARLO writer, behind the QZ* shims.
#pragma once

#include "core/model.h"

namespace zento::io {

// Stream reads: `title` names the model when it has none (null: "stream_%p").
[[nodiscard]] int read_lp_stream(Imodel& m, const char* text, int len, const char* title);
[[nodiscard]] int read_lp_file(Imodel& m, const char* fname);
[[nodiscard]] int read_ltx_stream(Imodel& m, const char* text, int len, const char* title);
// The line machine, or the grammar reader when bit 0x400 of QZ_IPARAM_COPY_MODE is set.
[[nodiscard]] int read_ltx_file(Imodel& m, const char* fname);
// The grammar-driven reader of the ZENTO format.
[[nodiscard]] int read_ltx_file_x(Imodel& m, const char* fname);
[[nodiscard]] int read_ltx_text_x(Imodel& m, const char* text, size_t len, const char* title);

[[nodiscard]] int write_ltx_file(const Imodel& m, const char* fname);
// The dual of a linear model in ZENTO format; with nObjSense 1 the dual's costs are negated.
[[nodiscard]] int write_dual_ltx_file(Imodel& m, const char* fname, int nObjSense);
[[nodiscard]] int write_marlo_file(const Imodel& m, const char* fname);

// Bit of QZ_IPARAM_COPY_MODE that selects the grammar reader of the ZENTO format.
constexpr int kLtxGrammarReaderBit = 0x400;

}  // namespace zento::io
