// Loading model data from host arrays. Every entry copies; the host keeps its arrays.
#pragma once

#include <vector>

#include "core/model.h"

namespace zento {

int load_lp_data(Imodel& m, int nCons, int nVars, int dObjSense, double dObjConst,
                 const double* padC, const double* padB, const char* pszConTypes, int nAnnz,
                 const int* paiAcols, const int* panAcols, const double* padAcoef,
                 const int* paiArows, const double* padL, const double* padU);
int load_var_type(Imodel& m, char* pszVarTypes);
int load_semicont_data(Imodel& m, int nSC, const int* paiVars, const double* padL,
                       const double* padU);
int load_sets_data(Imodel& m, int nSETS, const char* pszSETStype, const int* paiCARDnum,
                   const int* paiSETSbegcol, const int* paiSETScols);
int set_sets_state(Imodel& m, int iSet, int nState);
int load_cone_data(Imodel& m, int nCone, const char* pszConeTypes, const double* padConeAlpha,
                   const int* paiConebegcone, const int* paiConecols);
int load_posd_data(Imodel& m, int nPOSD, const int* paiPOSDdim, const int* paiPOSDbeg,
                   const int* paiPOSDrowndx, const int* paiPOSDcolndx, const int* paiPOSDvarndx);
int load_alldiff_data(Imodel& m, int nALLDIFF, const int* paiAlldiffDim, const int* paiAlldiffL,
                      const int* paiAlldiffU, const int* paiAlldiffBeg, const int* paiAlldiffVar);
int load_qc_data(Imodel& m, int QCnonzeros, const int* QCrowndx, const int* QCcolndx1,
                 const int* QCcolndx2, const double* QCcoef);
int load_name_data(Imodel& m, const char* pszTitle, const char* pszObjName,
                   const char* pszRhsName, const char* pszRngName, const char* pszBndname,
                   char** paszConNames, char** paszVarNames, char** paszConeNames);
int load_start_point(Imodel& m, bool mip, const double* padPrimal);
int load_start_point_partial(Imodel& m, bool mip, int nCols, const int* paiCols,
                             const double* padPrimal);
int load_var_priorities(Imodel& m, const int* panCprior);
int load_basis(Imodel& m, const int* panCstatus, const int* panRstatus);
int load_primal_solution(Imodel& m, const int* pnStatus, const double* pdObj,
                         const double* padPrimal, const double* padSlack, const double* pdPinf);
int load_dual_solution(Imodel& m, const int* pnStatus, const double* pdDobj,
                       const double* padDual, const double* padRedcost, const double* pdDinf);
int load_model_status(Imodel& m, const int* pnModelStatus, const int* pnErrorCode);

// Shared checks of column data: row range and finite coefficients.
int check_column_entries(const int* rows, const double* coef, int len, int nCons);
// Sums repeated rows of one column into their first occurrence, keeping the order of first
// occurrences; returns the new length. `mark` has nCons + 1 zeros and is left so.
int merge_duplicate_rows(int* rows, double* coef, int len, std::vector<int>& mark);
// Bounds of a binary column: refused when [lo, up] misses [0, 1], else clipped to it; a column
// left fixed becomes continuous.
int binary_bounds(double& lo, double& up, char& type);

// Shared checks of sets and cones (`count` per type may be null; `used` marks cone members and
// may come in with members of other cones marked).
int check_sets(const Imodel& m, int nSETS, const char* pszSETStype, const int* paiCARDnum,
               const int* paiSETSbegcol, const int* paiSETScols, int* count);
int check_cones(const Imodel& m, int nCone, const char* pszConeTypes, const double* padConeAlpha,
                const int* paiConebegcone, const int* paiConecols, std::vector<char>& used);
// Groups, orders and merges quadratic terms into `q` (empty when all coefficients are 0).
int build_quad_data(const Imodel& m, int QCnonzeros, const int* QCrowndx, const int* QCcolndx1,
                    const int* QCcolndx2, const double* QCcoef, QuadData& q);
// Per-variable counts, quadratic rows and the convexity flag (no term on an 'E' row).
void quad_counts(const Imodel& m, QuadData& q);

// The matrix without gaps: starts (nVars + 1), lengths, rows and coefficients.
void compact_columns(const Imodel& m, std::vector<int>& cols, std::vector<int>& lens,
                     std::vector<int>& rows, std::vector<double>& coef);
// Results no longer match the data after a load of a further model part.
void invalidate_results(Imodel& m);
// Row activities A x for a primal point.
void compute_row_activity(const Imodel& m, const double* x, double* activity);
// Objective c'x + constant of a primal point.
double compute_objective(const Imodel& m, const double* x);
// Builds the row-wise copy if absent (`setup_Acolpos`).
const RowCopy& setup_Acolpos(Imodel& m);

// Statistics (`baseStats`) and their log lines.
void compute_base_stats(Imodel& m);
void log_base_stats(Imodel& m);

}  // namespace zento
