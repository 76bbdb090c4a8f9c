/* The simplex engine: cold and warm runs, and solves with the final basis in the user's scale. */
#ifndef ZENTO_LP_H
#define ZENTO_LP_H

#ifdef __cplusplus
extern "C" {
#endif

/* Builds the simplex working record of a linear model and solves it: nMethod 1 primal, 2 dual,
   11 sifting (run as the primal). A record left by an earlier solve is discarded first. */
QZ_API int QZsplexOptimize(QZmodel model, int nMethod);
/* Warm run on the working record the last solve left: nMethod 1 primal, anything else dual.
   Changes of bounds, costs and right-hand sides made since keep the factorization. */
QZ_API int QZsplexReoptimize(QZmodel model, int nMethod);

/* A new model in the same environment holding the explicit dual of a linear model, with the
   same optimal value: its columns are the multipliers of the rows that are not 'N' (y <= 0 for
   'L', y >= 0 for 'G', free for 'E') followed by one range column w >= 0 per boxed column; its
   rows are the columns that are not fixed, each moved to a finite bound first (a'y <= c with a
   lower bound, a'y >= c with an upper bound only, a'y = c when free, a'y - w <= c when boxed).
   It maximizes when the model minimizes and the reverse. Delete it with QZdeleteModel. */
QZ_API QZmodel QZgetDualModel(QZmodel model, int* pnErrorcode);

/* Solves with the final basis B of the last simplex run, in the model's own scale and signs.
   Column p of B is the column of the variable basic in position p (QZgetBasis reports the
   position as its status); the slack of row i stands for +e_i, or -e_i on a 'G' row.
   QZdoFTRAN solves B x = b: b sparse over rows (nInc entries), x sparse over positions.
   QZdoBTRAN solves B' y = c: c sparse over positions, y sparse over rows. The output arrays
   need room for m entries. The dense forms take and return arrays of length m. Errors:
   QZERR_ILLEGAL_NULL_POINTER without a model, QZERR_INFO_NOT_AVAILABLE when no optimal,
   infeasible or unbounded basis is at hand, QZERR_INDEX_OUT_OF_RANGE for a count or index
   outside 0..m. */
QZ_API int QZdoFTRAN(QZmodel model, int nInc, const int* paiInc, const double* padInc,
                     int* pnOut, int* paiOut, double* padOut);
QZ_API int QZdoBTRAN(QZmodel model, int nInc, const int* paiInc, const double* padInc,
                     int* pnOut, int* paiOut, double* padOut);
QZ_API int QZdoDenseFTRAN(QZmodel model, const double* padB, double* padX);
QZ_API int QZdoDenseBTRAN(QZmodel model, const double* padC, double* padY);

#ifdef __cplusplus
}
#endif

#endif
