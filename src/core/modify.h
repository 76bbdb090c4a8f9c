// Changing a loaded model in place (the QZmodify*, QZadd*, QZdelete* family).
//
// Two things carry the design. The column-wise matrix keeps spare room (a gap) after each
// column, so that a column can take new entries without the matrix moving: adding k rows first
// sums the shortage of all columns and widens them in one pass, and a single column that runs
// out shifts only the columns after it. And one invalidation rule (`apply_change_rule`) runs
// after every change, so the stored results never claim more than they prove: the point and
// the basis stay as a warm start, with statuses that say they are not proven for the new data.
// Changes of bounds, costs, right-hand sides and row types are offered to an idle simplex
// record through the hooks of lp/simplex/glp_modify.h instead of dropping it.
//
// All entries check their input before they change anything, so a refused call leaves the
// model as it was.
#pragma once

#include <algorithm>
#include <vector>

#include "core/model.h"

namespace zento {

enum class Change {
  kData,       // values of existing rows and columns
  kStructure,  // rows, columns, matrix pattern or model parts
};

// The invalidation rule. `keepSolver`: the caller offers the change to a live simplex record
// itself and releases solver memory when the record refuses.
void apply_change_rule(Imodel& m, Change kind, bool keepSolver = false);

// A model that was never loaded takes additions as an empty loaded model.
void make_empty_loaded(Imodel& m);

// Compacts `v` by `map` (old index -> new index or -1) when it has one entry per old index.
template <class T>
void compact_by_map(std::vector<T>& v, const std::vector<int>& map) {
  if (v.size() != map.size()) return;
  size_t out = 0;
  for (size_t k = 0; k < map.size(); ++k)
    if (map[k] >= 0) v[out++] = v[k];
  v.resize(out);
}

// Grows a vector's capacity for `need` elements, with at least `margin` spare and geometric
// growth so that repeated small additions stay amortized.
template <class T>
void reserve_for(std::vector<T>& v, size_t need, size_t margin) {
  if (v.capacity() >= need) return;
  v.reserve(std::max(need + margin, v.capacity() + v.capacity() / 2));
}

// Names: appends `k` names (null: empty names, and nothing when the pool does not exist);
// a pool created here gives the `existing` items empty names.
int check_names(char** names, int k);
void append_names(NamePool& p, int existing, int k, char** names);
void compact_names(NamePool& p, const std::vector<int>& map);

// Matrix layout.
[[nodiscard]] int QZtransposeA(Imodel& m);
[[nodiscard]] int add_empty_spaces_acolumns(Imodel& m, const int* paiColnnz);
[[nodiscard]] int ensure_column_room(Imodel& m, int j, int extra);

// Coefficients, right-hand sides, types, bounds, costs.
[[nodiscard]] int modify_aj(Imodel& m, int iCol, int nRows, const int* paiRows,
                            const double* padAj);
[[nodiscard]] int delete_aj(Imodel& m, int iCol, int nRows, const int* paiRows);
[[nodiscard]] int modify_rhs(Imodel& m, int nRows, const int* paiRows, const double* padB);
[[nodiscard]] int modify_constraint_type(Imodel& m, int nRows, const int* paiRows,
                                         const char* pszTypes);
[[nodiscard]] int modify_variable_type(Imodel& m, int nCols, const int* paiCols,
                                       const char* pszTypes);
[[nodiscard]] int modify_bounds(Imodel& m, bool upper, int nCols, const int* paiCols,
                                const double* padV);
[[nodiscard]] int modify_objective(Imodel& m, int nCols, const int* paiCols, const double* padC);
[[nodiscard]] int modify_obj_constant(Imodel& m, double dObjConst);
[[nodiscard]] int modify_priorities(Imodel& m, int nCols, const int* paiCols,
                                    const int* paiPriorities);

// Growth.
[[nodiscard]] int set_prob_alloc_sizes(Imodel& m, int nColsAlloc, int nRowsAlloc, int nQCAlloc,
                                       int nNzAlloc, int nQCnzAlloc, int nNLPnzAlloc);
[[nodiscard]] int set_prob_name_alloc_sizes(Imodel& m, int nColNameBytes, int nRowNameBytes);
[[nodiscard]] int add_constraints(Imodel& m, int nCons, const char* pszConTypes,
                                  char** paszConNames, const int* paiRows,
                                  const double* padAcoef, const int* paiCols, const double* padB);
[[nodiscard]] int add_variables(Imodel& m, int nVars, const char* pszVarTypes,
                                char** paszVarNames, const int* paiAcols, const int* panAcols,
                                const double* padAcoef, const int* paiArows, const double* padC,
                                const double* padL, const double* padU);

// Shrinkage.
[[nodiscard]] int delete_constraints(Imodel& m, int nCons, const int* paiCons);
[[nodiscard]] int delete_variables(Imodel& m, int nVars, const int* paiVars);

// Model parts.
[[nodiscard]] int add_cones(Imodel& m, int nCones, const char* pszConeTypes,
                            const double* padConeAlpha, char** paszConeNames,
                            const int* paiConebegcol, const int* paiConecols);
[[nodiscard]] int modify_cone(Imodel& m, char cConeType, int iCone, int nNnz,
                              const int* paiCols, double dConeAlpha);
[[nodiscard]] int delete_cones(Imodel& m, int nCones, const int* paiCones);
[[nodiscard]] int add_sets(Imodel& m, int nSETS, const char* pszSETStype, const int* paiCARDnum,
                           const int* paiSETSbegcol, const int* paiSETScols);
[[nodiscard]] int modify_set(Imodel& m, char cSetType, int iSet, int nNnz, const int* paiCols);
[[nodiscard]] int delete_sets(Imodel& m, int nSETS, const int* paiSETS);
[[nodiscard]] int modify_semicont_vars(Imodel& m, int nVars, const int* paiVars,
                                       const double* padL);
[[nodiscard]] int delete_semicont_vars(Imodel& m, int nVars, const int* paiVars);
[[nodiscard]] int add_qc_terms(Imodel& m, int nQCnnz, const int* paiQCrows,
                               const int* paiQCcols1, const int* paiQCcols2,
                               const double* padQCcoef);
[[nodiscard]] int delete_qc_terms(Imodel& m, int nCons, const int* paiCons);
[[nodiscard]] int add_art_columns(Imodel& m, int nFlags, double dPenalty);
[[nodiscard]] int del_art_columns(Imodel& m, int nFlags);

// Removal of whole cones and sets by a keep mask (one flag per cone or set).
void drop_cones(Imodel& m, const std::vector<char>& keep);
void drop_sets(Imodel& m, const std::vector<char>& keep);

}  // namespace zento
