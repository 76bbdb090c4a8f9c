// The parameter registry `parlist` and its per-object copies `AllPamItems`.
//
// `parlist` is static data expanded from parlist.inc. The environment and every model own a
// copy of it in which each row points (`xxx_local`) at the field of that object's own
// parameter block, so a copy must be rebound after it is copied and is never shared. The
// copies are sorted by identifier; the environment also keeps `parNameIndex`, the rows sorted
// by macro name without regard to case, which the model copies share since their order is
// the same.
#pragma once

#include <cstdio>
#include <vector>

#include "core/params/param_blocks.h"
#include "zento.h"

namespace zento {

// What `xxx_local` points at.
enum ParKind : int { kKindNone = 0, kKindInt = 1, kKindDouble = 2, kKindString = 3 };

// Row flags of the table (not public class bits).
inline constexpr int kParLimit = 1;     // a negative value means "no limit" and is stored as -1
inline constexpr int kParReadOnly = 2;  // every set is refused

// The static table, ending with an all-zero row, and its row count (454).
const ParItem* parlist();
int parlist_count();
// Default of the parameter's block field in a fresh environment; differs from the registry
// default for a few rows. NaN for rows without a field or with a string field.
double param_block_default(int id);

// Registry copies of the environment and of each model.
int params_setup_env(QZenv env);
int params_setup_model(Imodel* model);
// Rebinds a model's registry copy after its blocks or rows were copied (QZcopyParam,
// QZcopyAllPam).
int params_rebind_model(Imodel* model);

// Binding of a copy to the blocks of its owner; reads each field's present value into xxx_val.
int QZI_SetParEnvRef(QZenv env, std::vector<ParItem>& items);
int QZI_SetParModelRef(Imodel* model, std::vector<ParItem>& items);
// Points one row at a field.
void QZI_SetLocalPtr(ParItem& item, void* local, int kind);

// ---- Row helpers ----
int gss_count_items(const ParItem* items);  // rows up to the all-zero end row
int gss_copy_items(const std::vector<ParItem>& src, std::vector<ParItem>& dst);
// Copies only rows whose class has a bit of `mask`.
int gss_copy_items_mask(const std::vector<ParItem>& src, std::vector<ParItem>& dst, int mask);
void gss_free_items(std::vector<ParItem>& items);
ParItem* gss_getitem_by_pos(std::vector<ParItem>& items, int pos);
// Binary search on the identifier when `sorted`, else a scan.
ParItem* gss_getitem_by_id(std::vector<ParItem>& items, int id, bool sorted = true);
// Binary search through `nameIndex` when one is given, else a scan; case is ignored.
ParItem* gss_getitem_by_szid(std::vector<ParItem>& items, const char* szid,
                             const std::vector<int>* nameIndex = nullptr);
// Scan on the short description, case ignored.
ParItem* gss_getitem_by_name(std::vector<ParItem>& items, const char* name);
// Fills `index` with the rows ordered by macro name, case ignored.
void gss_sort_items_by_szid(const std::vector<ParItem>& items, std::vector<int>& index);

// The class marker of a copy, held in the position field of its first row.
int par_copy_class(const std::vector<ParItem>& items);

// ---- Registry-level get and set (the tuner's view) ----
// Sets a row through its binding: the row must be of the copy's class and of the right type;
// a value outside [min, max] is accepted only when it equals the registry default.
int QZI_SetIntPar(std::vector<ParItem>& items, int id, int value);
int QZI_SetDouPar(std::vector<ParItem>& items, int id, double value);
// Reads the bound field, or xxx_val for an unbound row.
int QZI_GetIntPar(std::vector<ParItem>& items, int id, int* value);
int QZI_GetDouPar(std::vector<ParItem>& items, int id, double* value);
int QZI_GetIntParRange(std::vector<ParItem>& items, int id, int* min, int* max);
int QZI_GetDouParRange(std::vector<ParItem>& items, int id, double* min, double* max);
int QZI_GetIdPar(std::vector<ParItem>& items, const char* szid, int* id);
int QZI_GetSzIdPar(std::vector<ParItem>& items, int id, const char** szid);
int QZI_GetNamePar(std::vector<ParItem>& items, int id, const char** name);
int QZI_GetHelpPar(std::vector<ParItem>& items, int id, const char** help);

// Reads the current value of a bound row as a double (ints and doubles alike).
double par_value(const ParItem& item);

// ---- Renames ----
// The new name of an old macro name (parameters, information keys and other constants), or
// null. Case is ignored.
const char* param_rename(const char* oldName);
int param_rename_count();

}  // namespace zento
