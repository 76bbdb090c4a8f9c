/* Mixed-integer solver entries of the zento library. Included by zento.h. */
#ifndef ZENTO_MIP_H
#define ZENTO_MIP_H

#ifdef __cplusplus
extern "C" {
#endif

/* Solves a model with integer columns by branch-and-bound; the status comes back through
   pnStatus and the results through QZgetMIP* and the QZ_*INFO_MIP_* keys. */
QZ_API int QZsolveMIP(QZmodel model, int* pnStatus);
/* Same as QZsolveMIP. */
QZ_API int QZbnbSolve(QZmodel model, int* pnStatus);
/* Best objective and best bound of the last MIP solve, in the model's sense. */
QZ_API int QZgetBestBounds(QZmodel model, double* pdBestObj, double* pdBestBound);

#ifdef __cplusplus
}
#endif

#endif /* ZENTO_MIP_H */
