// The registry table against itself, the public header, the blocks and the renames.
#include <strings.h>

#include <cstring>
#include <set>
#include <string>

#include "core/env.h"
#include "core/model.h"
#include "core/params/param_access.h"
#include "core/version.h"
#include "param_test_util.h"

namespace zento::test {
namespace {

using RegistryTest = EnvFixture;

TEST(RegistryTable, RowsAreUniqueSortedAndWellFormed) {
  const std::vector<ParItem> rows = registry_rows();
  ASSERT_EQ(rows.size(), 454u);
  std::set<std::string> names;
  for (size_t i = 0; i < rows.size(); ++i) {
    const ParItem& r = rows[i];
    SCOPED_TRACE(r.xxx_szid);
    if (i > 0) {
      EXPECT_LT(rows[i - 1].xxx_id, r.xxx_id);
    }
    std::string upper(r.xxx_szid);
    for (char& c : upper) c = static_cast<char>(std::toupper(c));
    EXPECT_EQ(upper, r.xxx_szid);
    EXPECT_TRUE(names.insert(upper).second);
    EXPECT_LT(std::strlen(r.xxx_szid), size_t{QZ_MAX_PARAM_NAME_LENGTH});
    ASSERT_NE(r.xxx_name, nullptr);
    ASSERT_NE(r.xxx_help, nullptr);
    EXPECT_GT(std::strlen(r.xxx_name), 0u);
    EXPECT_GT(std::strlen(r.xxx_help), 0u);
    EXPECT_LT(std::strlen(r.xxx_help), size_t{QZ_MAX_PARAM_DESC_LENGTH});
    // The letter after QZ_ gives the type, with one documented exception.
    const std::string prefix(r.xxx_szid, 10);
    const int expected = prefix == "QZ_IPARAM_"   ? QZ_INT_PARAMETER_TYPE
                         : prefix == "QZ_DPARAM_" ? QZ_DOUBLE_PARAMETER_TYPE
                                                  : QZ_STRING_PARAMETER_TYPE;
    if (r.xxx_id != QZ_IPARAM_SOLVER_TIMLMT) {
      EXPECT_EQ(r.xxx_type, expected);
    }
    if (is_reserved(r)) {
      EXPECT_EQ(r.xxx_min, 0);
      EXPECT_EQ(r.xxx_max, -1);
    } else if (!is_string(r)) {
      EXPECT_LE(r.xxx_min, r.xxx_max);
      EXPECT_GE(r.xxx_dfl, r.xxx_min);
      EXPECT_LE(r.xxx_dfl, r.xxx_max);
    }
    if (r.xxx_step >= 0) {
      EXPECT_GT(r.xxx_step, 0);
    }
  }
  EXPECT_EQ(rows[0].xxx_id, QZ_IPARAM_VER_MAJOR);
  EXPECT_EQ(parlist()[parlist_count()].xxx_id, 0);  // the all-zero end row
  const ParItem* reserved4073 = param_row(4073);
  const ParItem* reserved4075 = param_row(4075);
  ASSERT_TRUE(reserved4073 && reserved4075);
  EXPECT_TRUE(is_reserved(*reserved4073) && is_reserved(*reserved4075));
}

TEST(RegistryTable, SharedFieldsHaveOneValue) {
  // Int and double forms of a limit are two rows and one field.
  const int pairs[][2] = {{QZ_IPARAM_MIP_TIMLIM, QZ_DPARAM_MIP_TIMLIM},
                          {QZ_IPARAM_LP_ITRLMT, QZ_DPARAM_LP_ITRLMT},
                          {QZ_IPARAM_SOLVER_TIMLMT, QZ_DPARAM_SOLVER_TIMLMT},
                          {QZ_IPARAM_GOP_BRANCH_LIMIT, QZ_DPARAM_GOP_BRANCH_LIMIT}};
  int rc = 0;
  QZenv env = QZcreateEnv(&rc);
  ASSERT_EQ(rc, 0);
  for (const auto& p : pairs) {
    ParItem* a = gss_getitem_by_id(env->AllPamItems, p[0]);
    ParItem* b = gss_getitem_by_id(env->AllPamItems, p[1]);
    ASSERT_TRUE(a && b);
    EXPECT_EQ(a->xxx_local, b->xxx_local) << a->xxx_szid;
    EXPECT_EQ(a->xxx_kind, kKindDouble);
  }
  QZdeleteEnv(&env);
}

TEST_F(RegistryTest, EveryFieldRowIsBoundAndStartsAtItsBlockDefault) {
  QZmodel m = new_model();
  for (std::vector<ParItem>* items : {&env->AllPamItems, &m->AllPamItems}) {
    ASSERT_EQ(items->size(), 454u);
    for (const ParItem& it : *items) {
      SCOPED_TRACE(it.xxx_szid);
      const bool hasField = !is_reserved(it) && !is_read_only(it);
      EXPECT_EQ(it.xxx_local != nullptr, hasField);
      if (!hasField || is_string(it)) continue;
      EXPECT_EQ(par_value(it), param_block_default(it.xxx_id));
      EXPECT_EQ(it.xxx_val, par_value(it));
    }
  }
  // Binding points into the owner's own blocks.
  EXPECT_EQ(gss_getitem_by_id(m->AllPamItems, QZ_DPARAM_SOLVER_FEASTOL)->xxx_local,
            &m->SplexPam.solver_feastol);
  EXPECT_EQ(gss_getitem_by_id(env->AllPamItems, QZ_IPARAM_MIP_PRINTLEVEL)->xxx_local,
            &env->BandBPam.mip_printlevel);
  EXPECT_EQ(gss_getitem_by_id(m->AllPamItems, QZ_IPARAM_STOC_METHOD)->xxx_local,
            &m->SPPam.stoc_method);
  // The registry reports its own default where the block starts elsewhere.
  const int differing[] = {QZ_IPARAM_LP_XMODE, QZ_IPARAM_LP_UMODE, QZ_IPARAM_LP_SPRINT_COLFACT,
                           QZ_IPARAM_LP_BASPOLISH_ITRLMT, QZ_IPARAM_LP_BASPOLISH_DEPTH};
  int nDiffer = 0;
  for (const ParItem& it : registry_rows())
    if (!std::isnan(param_block_default(it.xxx_id)) &&
        param_block_default(it.xxx_id) != it.xxx_dfl)
      ++nDiffer;
  EXPECT_EQ(nDiffer, 5);
  for (int id : differing) {
    double lo = 0, hi = 0, dfl = 0;
    ASSERT_EQ(QZgetParamInfo(env, id, nullptr, nullptr, &lo, &hi, &dfl), 0);
    EXPECT_NE(dfl, param_block_default(id)) << id;
  }
  QZdeleteModel(&m);
}

TEST_F(RegistryTest, CopiesCarryTheirClassMarkerAndNameIndex) {
  QZmodel m = new_model();
  EXPECT_EQ(par_copy_class(env->AllPamItems), QZ_PARCLASS_ENV);
  EXPECT_EQ(par_copy_class(m->AllPamItems), QZ_PARCLASS_MODEL);
  EXPECT_EQ(env->nParTotal, 454);
  EXPECT_EQ(env->nParSorted, 454);
  ASSERT_EQ(env->parNameIndex.size(), 454u);
  for (size_t k = 1; k < env->parNameIndex.size(); ++k)
    EXPECT_LT(strcasecmp(env->AllPamItems[env->parNameIndex[k - 1]].xxx_szid,
                         env->AllPamItems[env->parNameIndex[k]].xxx_szid),
              0);
  for (const ParItem& it : registry_rows())
    EXPECT_EQ(gss_getitem_by_szid(m->AllPamItems, mixed_case(it.xxx_szid).c_str(),
                                  &env->parNameIndex)
                  ->xxx_id,
              it.xxx_id);
  // A copied registry is rebound to the receiving model, never shared.
  QZmodel other = new_model();
  ASSERT_EQ(QZcopyAllPam(m, other), 0);
  EXPECT_EQ(gss_getitem_by_id(other->AllPamItems, QZ_IPARAM_LP_SCALE)->xxx_local,
            &other->SplexPam.lp_scale);
  ASSERT_EQ(QZsetModelIntParameter(m, QZ_IPARAM_LP_SCALE, 2), 0);
  ASSERT_EQ(QZcopyParam(m, other, 0), 0);
  EXPECT_EQ(gss_getitem_by_id(other->AllPamItems, QZ_IPARAM_LP_SCALE)->xxx_local,
            &other->SplexPam.lp_scale);
  EXPECT_EQ(other->SplexPam.lp_scale, 2);
  QZdeleteModel(&other);
  QZdeleteModel(&m);
}

TEST(RegistryTable, RenamesLeadToKnownNames) {
  EXPECT_EQ(param_rename_count(), 66);
  EXPECT_STREQ(param_rename("qz_iparam_mip_timlim"), nullptr);
  EXPECT_STREQ(param_rename("QZ_IPARAM_MIPTIMLIM"), "QZ_IPARAM_MIP_TIMLIM");
  EXPECT_STREQ(param_rename("qz_gopsolstat_optimal"), "QZ_STATUS_OPTIMAL");
  EXPECT_STREQ(param_rename("QZLOC_BANDB"), "QZLOC_MIP");
  // Parameter renames end at a registry row within a few steps.
  int rc = 0;
  QZenv env = QZcreateEnv(&rc);
  for (const char* old : {"QZ_IPARAM_ITRLMT", "QZ_IPARAM_NLP_MSW_MAXREF", "QZ_DPARAM_MIP_OPTTOL",
                          "QZ_DPARAM_MIP_PSEUDOCOST_WEIGHT", "QZ_IPARAM_GA_MAXGEN"})
    EXPECT_NE(param_row_by_name(env, old), nullptr) << old;
  QZdeleteEnv(&env);
}

TEST_F(RegistryTest, RegistryLevelSetAcceptsTheDefaultOutsideTheRange) {
  QZmodel m = new_model();
  std::vector<ParItem>& items = m->AllPamItems;
  ParItem* xmode = gss_getitem_by_id(items, QZ_IPARAM_LP_XMODE);
  ASSERT_NE(xmode, nullptr);
  ASSERT_EQ(QZI_SetIntPar(items, QZ_IPARAM_LP_XMODE, 12), 0);
  EXPECT_EQ(m->SplexPam.lp_xmode, 12);
  EXPECT_EQ(QZI_SetIntPar(items, QZ_IPARAM_LP_SCALE, 7), QZERR_PARAM_OUT_OF_RANGE);
  EXPECT_EQ(QZI_SetIntPar(items, QZ_DPARAM_SOLVER_FEASTOL, 1), QZERR_PARAM_CANNOT_BE_SET);
  EXPECT_EQ(QZI_SetIntPar(items, QZ_IPARAM_DEFAULT_SEED, 5), QZERR_PARAM_CANNOT_BE_SET);
  EXPECT_EQ(QZI_SetIntPar(items, 12345, 5), QZERR_BAD_PARAM_ID);
  // A row whose range excludes its default: the tuner may always put the default back.
  ParItem saved = *xmode;
  xmode->xxx_min = 100;
  xmode->xxx_max = 200;
  xmode->xxx_dfl = 12;
  EXPECT_EQ(QZI_SetIntPar(items, QZ_IPARAM_LP_XMODE, 12), 0);
  EXPECT_EQ(QZI_SetIntPar(items, QZ_IPARAM_LP_XMODE, 13), QZERR_PARAM_OUT_OF_RANGE);
  *xmode = saved;
  int v = 0;
  EXPECT_EQ(QZI_GetIntPar(items, QZ_IPARAM_LP_XMODE, &v), 0);
  EXPECT_EQ(v, 12);
  EXPECT_EQ(QZI_GetIntPar(env->AllPamItems, QZ_IPARAM_OBJSENSE, &v), QZERR_INFO_NOT_AVAILABLE);
  double d = 0;
  ASSERT_EQ(QZI_SetDouPar(items, QZ_DPARAM_MIP_RELOPTTOL, 1e-4), 0);
  ASSERT_EQ(QZI_GetDouPar(items, QZ_DPARAM_MIP_RELOPTTOL, &d), 0);
  EXPECT_EQ(d, 1e-4);
  EXPECT_EQ(m->BandBPam.mip_relopttol, 1e-4);
  QZdeleteModel(&m);
}

}  // namespace
}  // namespace zento::test
