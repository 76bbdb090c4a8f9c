// Hooks through which model modification pushes small data changes into a resident simplex
// record `glp`, so that the next solve starts warm instead of rebuilding the record.
//
// Contract (the modification code relies on exactly this):
//
// * Who calls. The modification entries call these hooks only after the change is stored in
//   the model (`m.lp` holds the new value), only while `m.glp` is non-null, and only when
//   `glp_is_idle(m)` said yes for this batch. A batch is one public call (for instance one
//   QZmodifyUpperBounds with many columns): `glp_is_idle` is asked once, then one hook call per
//   changed entry in input order. The first nonzero return stops the batch; the caller then
//   releases all solver memory (`free_solver_memory`), so a hook that refuses need not undo
//   anything it changed earlier in the batch. The next solve then starts from the basis stored
//   in `m.sol`, which the modification code keeps usable.
//
// * `glp_is_idle(m)`: true when the record sits between solves (no method running, no
//   callback of the record active), was built on this very model (not on a presolved copy:
//   its m and n equal the model's `nCons` and `nVars`), and has no objective row in force.
//   Anything else answers false.
//
// * Values arrive unscaled, in the model's own terms, exactly as the model now stores them.
//   The hook applies the record's scaling, mirroring and sense:
//   - `glp_take_rhs(m, i, b)`: rhs[i] := b * rscal[i].
//   - `glp_take_bounds(m, j, L, U)`: L and U are the column's model bounds after the change
//     (both are passed even when one changed; either may be -1e30 / +1e30 meaning none).
//     Working bounds: lb = L / cscal[j], ub = U / cscal[j] (infinite ones stay infinite);
//     for a mirrored column (`flipped[j]`) lb = -U / cscal[j], ub = -L / cscal[j]. The column
//     stays mirrored (the sign convention of its column and cost is kept) even when its new
//     bounds would not have asked for it. Both the working copies (lb, ub) and the unshifted
//     copies (lb0, ub0) get the new values, and any bound shift of that column is dropped.
//   - `glp_take_cost(m, j, c)`: cost[j] := c * oscal * cscal[j] * (objsense == -1 ? -1 : 1)
//     * (flipped[j] ? -1 : 1). The record keeps its own reduced costs or flags them stale.
//   - `glp_take_contype(m, i, oldType, newType)` on the logical column n + i:
//       new type  bounds             stored coefficient   status when nonbasic
//       'E'       [0, 0]             +1                   -4 (fixed)
//       'L'       [0, +INF)          +1                   -1
//       'G'       [0, +INF)          -1                   -1
//       'N'       (-INF, +INF), flag 8  +1                -3
//     A change to or from 'G' flips the sign of that logical's stored entry (in acols and, if
//     built, in arows) and so of anything the factorization holds for it; a hook that cannot
//     redo that cheaply (e.g. the logical is basic and the factor holds its column) returns
//     nonzero. The free flag 8 follows the new type.
// * Status rule for a nonbasic column after a bound change, in the record's codes (-1 at lower,
//   -2 at upper, -3 free, -4 fixed), applied in working space after mirroring:
//     new lb == new ub                         -> -4
//     was -4 (old lb == old ub), now lb < ub    -> the bound that did not move: a moved lower
//                                                 bound gives -2, a moved upper bound -1
//     was -1 and lb is now -INF                -> -2 if ub is finite, else -3
//     was -2 and ub is now +INF                -> -1 if lb is finite, else -3
//     was -3 and a bound is now finite         -> -1 for a finite lb, else -2
//     otherwise                                -> unchanged
//   A basic column keeps its row. The model side applies the same rule to `sol->colStatus` in
//   the public codes, where fixed is shown as at-lower or at-upper.
// * After any successful hook the record must be flagged so that primal values (basic values
//   rhs1, row states rstat, xvec, infeasibility counts and the objective) are recomputed from
//   the factorization before the next iteration; the next QZoptimize on an idle record is a
//   warm start (dual simplex when the change left it primal infeasible, primal when it left it
//   dual infeasible).
// * Return 0 when the record took the change, nonzero when it cannot; never throw, never free
//   the record itself (the caller does).
#pragma once

#include "core/model.h"

namespace zento {

[[nodiscard]] bool glp_is_idle(const Imodel& m);
[[nodiscard]] int glp_take_rhs(Imodel& m, int row, double value);
[[nodiscard]] int glp_take_bounds(Imodel& m, int col, double lower, double upper);
[[nodiscard]] int glp_take_cost(Imodel& m, int col, double cost);
[[nodiscard]] int glp_take_contype(Imodel& m, int row, char oldType, char newType);

}  // namespace zento
