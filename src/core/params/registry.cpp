// The static registry, its copies on the environment and the models, and the row helpers.
#include "core/params/registry.h"

#include <strings.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <string>

#include "core/env.h"
#include "core/model.h"

namespace zento {

// Every public identifier must equal its row's identifier in the table.
#define QZ_PAR(ID, NAME, TYPE, CLS, MIN, MAX, DFL, STEP, FLAGS, BLOCK, FIELD, BDFL, SHORT, HELP) \
  static_assert((ID) == (NAME), #NAME);
#define QZ_PAR_NOFIELD(ID, NAME, TYPE, CLS, MIN, MAX, DFL, STEP, FLAGS, SHORT, HELP) \
  static_assert((ID) == (NAME), #NAME);
#include "core/params/parlist.inc"
#undef QZ_PAR
#undef QZ_PAR_NOFIELD

namespace {

const ParItem kParlist[] = {
#define QZ_PAR(ID, NAME, TYPE, CLS, MIN, MAX, DFL, STEP, FLAGS, BLOCK, FIELD, BDFL, SHORT, HELP) \
  {0, ID, #NAME, SHORT, HELP, TYPE, CLS, MIN, MAX, DFL, DFL, STEP, nullptr, kKindNone, FLAGS},
#define QZ_PAR_NOFIELD(ID, NAME, TYPE, CLS, MIN, MAX, DFL, STEP, FLAGS, SHORT, HELP) \
  {0, ID, #NAME, SHORT, HELP, TYPE, CLS, MIN, MAX, DFL, DFL, STEP, nullptr, kKindNone, FLAGS},
#include "core/params/parlist.inc"
#undef QZ_PAR
#undef QZ_PAR_NOFIELD
    ParItem{},
};

constexpr int kParCount = static_cast<int>(sizeof(kParlist) / sizeof(kParlist[0])) - 1;

void bind_field(ParItem& it, int* p) { QZI_SetLocalPtr(it, p, kKindInt); }
void bind_field(ParItem& it, double* p) { QZI_SetLocalPtr(it, p, kKindDouble); }
void bind_field(ParItem& it, std::string* p) { QZI_SetLocalPtr(it, p, kKindString); }

// Points a row at the field of `owner` (the environment or a model; both carry the blocks
// under the same names).
template <class Owner>
void bind_row(Owner& owner, ParItem& it) {
  switch (it.xxx_id) {
#define QZ_PAR(ID, NAME, TYPE, CLS, MIN, MAX, DFL, STEP, FLAGS, BLOCK, FIELD, BDFL, SHORT, HELP) \
  case ID:                                                                                    \
    bind_field(it, &owner.BLOCK.FIELD);                                                       \
    return;
#define QZ_PAR_NOFIELD(ID, NAME, TYPE, CLS, MIN, MAX, DFL, STEP, FLAGS, SHORT, HELP)
#include "core/params/parlist.inc"
#undef QZ_PAR
#undef QZ_PAR_NOFIELD
    default:
      QZI_SetLocalPtr(it, nullptr, kKindNone);
  }
}

template <class Owner>
int bind_all(Owner& owner, std::vector<ParItem>& items) {
  for (ParItem& it : items) {
    bind_row(owner, it);
    if (it.xxx_kind != kKindNone) it.xxx_val = par_value(it);
  }
  return 0;
}

bool by_id(const ParItem& a, const ParItem& b) { return a.xxx_id < b.xxx_id; }

}  // namespace

const ParItem* parlist() { return kParlist; }
int parlist_count() { return kParCount; }

double param_block_default(int id) {
  switch (id) {
#define QZ_PAR(ID, NAME, TYPE, CLS, MIN, MAX, DFL, STEP, FLAGS, BLOCK, FIELD, BDFL, SHORT, HELP) \
  case ID:                                                                                    \
    return (TYPE) == QZ_STRING_PARAMETER_TYPE ? std::numeric_limits<double>::quiet_NaN()      \
                                              : static_cast<double>(BDFL);
#define QZ_PAR_NOFIELD(ID, NAME, TYPE, CLS, MIN, MAX, DFL, STEP, FLAGS, SHORT, HELP)
#include "core/params/parlist.inc"
#undef QZ_PAR
#undef QZ_PAR_NOFIELD
    default:
      return std::numeric_limits<double>::quiet_NaN();
  }
}

void QZI_SetLocalPtr(ParItem& item, void* local, int kind) {
  item.xxx_local = local;
  item.xxx_kind = local != nullptr ? kind : kKindNone;
}

double par_value(const ParItem& item) {
  switch (item.xxx_kind) {
    case kKindInt:
      return *static_cast<const int*>(item.xxx_local);
    case kKindDouble:
      return *static_cast<const double*>(item.xxx_local);
    case kKindString:
      return 0;
    default:
      return item.xxx_val;
  }
}

int QZI_SetParEnvRef(QZenv env, std::vector<ParItem>& items) { return bind_all(*env, items); }

int QZI_SetParModelRef(Imodel* model, std::vector<ParItem>& items) {
  return bind_all(*model, items);
}

int params_setup_env(QZenv env) {
  std::vector<ParItem>& items = env->AllPamItems;
  const int n = gss_count_items(kParlist);
  items.assign(kParlist, kParlist + n);
  std::stable_sort(items.begin(), items.end(), by_id);
  env->nParTotal = n;
  env->parNameBytes = 0;
  for (const ParItem& it : items)
    env->parNameBytes += std::max(12, static_cast<int>(std::strlen(it.xxx_szid)));
  gss_sort_items_by_szid(items, env->parNameIndex);
  for (int rank = 0; rank < n; ++rank) items[env->parNameIndex[rank]].xxx_pos = rank;
  if (n > 0) items[0].xxx_pos = QZ_PARCLASS_ENV;
  env->nParSorted = n;
  return QZI_SetParEnvRef(env, items);
}

int params_setup_model(Imodel* model) {
  gss_copy_items(model->env->AllPamItems, model->AllPamItems);
  return params_rebind_model(model);
}

int params_rebind_model(Imodel* model) {
  std::vector<ParItem>& items = model->AllPamItems;
  if (items.empty()) gss_copy_items(model->env->AllPamItems, items);
  if (!items.empty()) items[0].xxx_pos = QZ_PARCLASS_MODEL;
  return QZI_SetParModelRef(model, items);
}

int gss_count_items(const ParItem* items) {
  int n = 0;
  while (items[n].xxx_id != 0) ++n;
  return n;
}

int gss_copy_items(const std::vector<ParItem>& src, std::vector<ParItem>& dst) {
  dst = src;
  return 0;
}

int gss_copy_items_mask(const std::vector<ParItem>& src, std::vector<ParItem>& dst, int mask) {
  dst.clear();
  for (const ParItem& it : src)
    if (it.xxx_class & mask) dst.push_back(it);
  return 0;
}

void gss_free_items(std::vector<ParItem>& items) { std::vector<ParItem>().swap(items); }

ParItem* gss_getitem_by_pos(std::vector<ParItem>& items, int pos) {
  if (pos < 0 || pos >= static_cast<int>(items.size())) return nullptr;
  return &items[pos];
}

ParItem* gss_getitem_by_id(std::vector<ParItem>& items, int id, bool sorted) {
  if (sorted) {
    auto it = std::lower_bound(items.begin(), items.end(), id,
                               [](const ParItem& a, int key) { return a.xxx_id < key; });
    return (it != items.end() && it->xxx_id == id) ? &*it : nullptr;
  }
  for (ParItem& it : items)
    if (it.xxx_id == id) return &it;
  return nullptr;
}

ParItem* gss_getitem_by_szid(std::vector<ParItem>& items, const char* szid,
                             const std::vector<int>* nameIndex) {
  if (szid == nullptr) return nullptr;
  if (nameIndex != nullptr && nameIndex->size() == items.size()) {
    auto it = std::lower_bound(nameIndex->begin(), nameIndex->end(), szid,
                               [&](int row, const char* key) {
                                 return strcasecmp(items[row].xxx_szid, key) < 0;
                               });
    if (it != nameIndex->end() && strcasecmp(items[*it].xxx_szid, szid) == 0) return &items[*it];
    return nullptr;
  }
  for (ParItem& it : items)
    if (strcasecmp(it.xxx_szid, szid) == 0) return &it;
  return nullptr;
}

ParItem* gss_getitem_by_name(std::vector<ParItem>& items, const char* name) {
  if (name == nullptr) return nullptr;
  for (ParItem& it : items)
    if (it.xxx_name != nullptr && strcasecmp(it.xxx_name, name) == 0) return &it;
  return nullptr;
}

void gss_sort_items_by_szid(const std::vector<ParItem>& items, std::vector<int>& index) {
  index.resize(items.size());
  for (size_t i = 0; i < items.size(); ++i) index[i] = static_cast<int>(i);
  std::sort(index.begin(), index.end(), [&](int a, int b) {
    return strcasecmp(items[a].xxx_szid, items[b].xxx_szid) < 0;
  });
}

int par_copy_class(const std::vector<ParItem>& items) {
  return items.empty() ? 0 : items[0].xxx_pos;
}

namespace {

int set_checked(std::vector<ParItem>& items, int id, int type, double value) {
  ParItem* it = gss_getitem_by_id(items, id);
  if (it == nullptr) return QZERR_BAD_PARAM_ID;
  if ((it->xxx_class & par_copy_class(items)) == 0 || (it->xxx_flags & kParReadOnly))
    return QZERR_PARAM_CANNOT_BE_SET;
  if (it->xxx_type != type || it->xxx_kind == kKindString) return QZERR_PARAM_CANNOT_BE_SET;
  const bool inRange = value >= it->xxx_min && value <= it->xxx_max;
  if (!inRange && value != it->xxx_dfl) return QZERR_PARAM_OUT_OF_RANGE;
  it->xxx_val = value;
  if (it->xxx_kind == kKindInt) *static_cast<int*>(it->xxx_local) = static_cast<int>(value);
  if (it->xxx_kind == kKindDouble) *static_cast<double*>(it->xxx_local) = value;
  return 0;
}

int get_checked(std::vector<ParItem>& items, int id, int type, double* value) {
  ParItem* it = gss_getitem_by_id(items, id);
  if (it == nullptr) return QZERR_BAD_PARAM_ID;
  if ((it->xxx_class & par_copy_class(items)) == 0 || it->xxx_type != type)
    return QZERR_INFO_NOT_AVAILABLE;
  *value = par_value(*it);
  return 0;
}

}  // namespace

int QZI_SetIntPar(std::vector<ParItem>& items, int id, int value) {
  return set_checked(items, id, QZ_INT_PARAMETER_TYPE, value);
}

int QZI_SetDouPar(std::vector<ParItem>& items, int id, double value) {
  return set_checked(items, id, QZ_DOUBLE_PARAMETER_TYPE, value);
}

int QZI_GetIntPar(std::vector<ParItem>& items, int id, int* value) {
  double v = 0;
  const int rc = get_checked(items, id, QZ_INT_PARAMETER_TYPE, &v);
  if (rc == 0) *value = static_cast<int>(v);
  return rc;
}

int QZI_GetDouPar(std::vector<ParItem>& items, int id, double* value) {
  return get_checked(items, id, QZ_DOUBLE_PARAMETER_TYPE, value);
}

int QZI_GetIntParRange(std::vector<ParItem>& items, int id, int* min, int* max) {
  ParItem* it = gss_getitem_by_id(items, id);
  if (it == nullptr) return QZERR_BAD_PARAM_ID;
  if (it->xxx_type != QZ_INT_PARAMETER_TYPE) return QZERR_INFO_NOT_AVAILABLE;
  *min = static_cast<int>(it->xxx_min);
  *max = static_cast<int>(it->xxx_max);
  return 0;
}

int QZI_GetDouParRange(std::vector<ParItem>& items, int id, double* min, double* max) {
  ParItem* it = gss_getitem_by_id(items, id);
  if (it == nullptr) return QZERR_BAD_PARAM_ID;
  if (it->xxx_type != QZ_DOUBLE_PARAMETER_TYPE) return QZERR_INFO_NOT_AVAILABLE;
  *min = it->xxx_min;
  *max = it->xxx_max;
  return 0;
}

int QZI_GetIdPar(std::vector<ParItem>& items, const char* szid, int* id) {
  ParItem* it = gss_getitem_by_szid(items, szid);
  if (it == nullptr) return QZERR_BAD_PARAM_ID;
  *id = it->xxx_id;
  return 0;
}

int QZI_GetSzIdPar(std::vector<ParItem>& items, int id, const char** szid) {
  ParItem* it = gss_getitem_by_id(items, id);
  if (it == nullptr) return QZERR_BAD_PARAM_ID;
  *szid = it->xxx_szid;
  return 0;
}

int QZI_GetNamePar(std::vector<ParItem>& items, int id, const char** name) {
  ParItem* it = gss_getitem_by_id(items, id);
  if (it == nullptr) return QZERR_BAD_PARAM_ID;
  *name = it->xxx_name;
  return 0;
}

int QZI_GetHelpPar(std::vector<ParItem>& items, int id, const char** help) {
  ParItem* it = gss_getitem_by_id(items, id);
  if (it == nullptr) return QZERR_BAD_PARAM_ID;
  *help = it->xxx_help;
  return 0;
}

}  // namespace zento
