// Record types of the LP post stack and the basis codes of the walk back.
//
// Every record restores, for the rows and columns it removed, the primal values, the row
// multipliers, the reduced costs and the basis statuses, such that the point rebuilt for the
// larger model satisfies d = c - A'y and keeps one basic per restored row (the basis matrix of
// the larger model stays nonsingular: each step adds rows whose new basic sits on a pivot of
// its own). Values are in minimization form.
//
// Layouts (fields in push order; the reader takes them in reverse):
//   2  row deleted        ints r, s(slack made basic, or -1), list cols | dbls b, list vals
//   3  column fixed       ints j, r(row of a singleton-row fix, or -1), list rows |
//                         dbls v, c, lo, up, list vals          (the column's entries)
//   5  column eliminated  ints j, r, k(kept column of a doubleton, or -1), flags, list cols,
//                         list rows | dbls a, b, c, lo, up, list row vals, list col vals
//   6  reduced columns    ints list of working columns
//   8  duplicate columns  ints j(kept), k | dbls lambda, lo_j, up_j, lo_k, up_k
//   11 reduced rows       ints list of working rows
//   12 forcing row        per column: ints k, list rows | dbls a, v, c, lo, up, list vals;
//                         then ints r, side(0 at minimum activity, 1 at maximum), count
//   13 duplicate rows     ints r, q, s_r, s_q, sigma_r, sigma_q, flags |
//                         dbls lambda, b_r, b_q, lo_q, up_q
//   14 slack made         ints r, s, sigma
//   15 slack to bound     ints r, s, keepUpper, sigma | dbls b, b(reduced)
#pragma once

namespace zento::presolve {

enum RecordType : int {
  kRecDeleteRow = 2,
  kRecFixCol = 3,
  kRecEliminate = 5,
  kRecReducedCols = 6,
  kRecDupCol = 8,
  kRecReducedRows = 11,
  kRecForceRow = 12,
  kRecDupRow = 13,
  kRecSlackMade = 14,
  kRecSlackToBound = 15,
};

// Flags of record 5 and 13: the kept column's (slack's) bound came from the removed one.
constexpr int kLowerFromRemoved = 1;
constexpr int kUpperFromRemoved = 2;

// Basis codes during the walk back.
enum class Bs : signed char { kUnset = -1, kBasic = 0, kLower = 1, kUpper = 2, kZero = 3 };

}  // namespace zento::presolve
