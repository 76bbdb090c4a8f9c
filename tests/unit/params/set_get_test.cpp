// Every registry row set and read back on the environment and on a model, through every entry.
#include <cstring>
#include <functional>
#include <string>

#include "core/env.h"
#include "core/model.h"
#include "core/params/param_access.h"
#include "param_test_util.h"
#include "zento_fortran.h"

namespace zento::test {
namespace {

// One way of reaching a parameter: typed or untyped entries, by identifier or by a name looked
// up in any case, on the environment or on a model.
struct Path {
  const char* label;
  bool onModel;
  bool untyped;
  bool byName;
};

const Path kPaths[] = {
    {"env typed id", false, false, false},   {"env untyped id", false, true, false},
    {"env typed name", false, false, true},  {"model typed id", true, false, false},
    {"model untyped id", true, true, false}, {"model untyped name", true, true, true},
};

class SetGet : public EnvFixture {
 protected:
  QZmodel model = nullptr;
  void SetUp() override {
    EnvFixture::SetUp();
    model = new_model();
  }
  void TearDown() override {
    QZdeleteModel(&model);
    EnvFixture::TearDown();
  }

  int resolve(const Path& p, const ParItem& r) {
    if (!p.byName) return r.xxx_id;
    int type = -1, id = -1;
    const std::string name = mixed_case(r.xxx_szid);
    EXPECT_EQ(QZgetParamMacroID(env, name.c_str(), &type, &id), 0) << name;
    EXPECT_EQ(type, r.xxx_type);
    return id;
  }

  int set(const Path& p, const ParItem& r, double v) {
    const int id = resolve(p, r);
    const bool stoc = is_stoc_param(id);
    if (r.xxx_type == QZ_INT_PARAMETER_TYPE) {
      int iv = static_cast<int>(v);
      if (p.untyped)
        return p.onModel ? QZsetModelParameter(model, id, &iv) : QZsetEnvParameter(env, id, &iv);
      if (stoc)
        return p.onModel ? QZsetModelStocParameterInt(model, id, iv)
                         : QZsetEnvStocParameterInt(env, id, iv);
      return p.onModel ? QZsetModelIntParameter(model, id, iv) : QZsetEnvIntParameter(env, id, iv);
    }
    if (p.untyped)
      return p.onModel ? QZsetModelParameter(model, id, &v) : QZsetEnvParameter(env, id, &v);
    if (stoc)
      return p.onModel ? QZsetModelStocParameterDou(model, id, v)
                       : QZsetEnvStocParameterDou(env, id, v);
    return p.onModel ? QZsetModelDouParameter(model, id, v) : QZsetEnvDouParameter(env, id, v);
  }

  double get(const Path& p, const ParItem& r) {
    const int id = resolve(p, r);
    int rc = -1;
    double out = std::nan("");
    if (r.xxx_type == QZ_INT_PARAMETER_TYPE) {
      int iv = INT_MIN;
      rc = p.untyped ? (p.onModel ? QZgetModelParameter(model, id, &iv)
                                  : QZgetEnvParameter(env, id, &iv))
                     : (p.onModel ? QZgetModelIntParameter(model, id, &iv)
                                  : QZgetEnvIntParameter(env, id, &iv));
      out = iv;
    } else {
      rc = p.untyped ? (p.onModel ? QZgetModelParameter(model, id, &out)
                                  : QZgetEnvParameter(env, id, &out))
                     : (p.onModel ? QZgetModelDouParameter(model, id, &out)
                                  : QZgetEnvDouParameter(env, id, &out));
    }
    EXPECT_EQ(rc, 0) << r.xxx_szid;
    return out;
  }

  std::vector<ParItem>& items(const Path& p) {
    return p.onModel ? model->AllPamItems : env->AllPamItems;
  }
};

TEST_F(SetGet, EveryRowTakesItsDefaultBoundsAndRefusesOutsideValues) {
  int checked = 0;
  for (const Path& p : kPaths) {
    SCOPED_TRACE(p.label);
    const int level = p.onModel ? QZ_PARCLASS_MODEL : QZ_PARCLASS_ENV;
    for (const ParItem& r : registry_rows()) {
      if (is_string(r) || is_reserved(r) || is_read_only(r)) continue;
      SCOPED_TRACE(r.xxx_szid);
      if (!settable_at(r, level)) {
        const auto before = snapshot(items(p));
        EXPECT_EQ(set(p, r, r.xxx_dfl), QZERR_PARAM_CANNOT_BE_SET);
        EXPECT_EQ(snapshot(items(p)), before);
        continue;
      }
      for (double v : {r.xxx_dfl, r.xxx_min, r.xxx_max, r.xxx_dfl}) {
        ASSERT_EQ(set(p, r, v), 0) << v;
        EXPECT_EQ(get(p, r), v);
      }
      if (auto v = other_value(r)) {
        ASSERT_EQ(set(p, r, *v), 0);
        EXPECT_EQ(get(p, r), *v);
      }
      for (double v : outside_values(r)) {
        const auto before = snapshot(items(p));
        const int expected = r.xxx_id == QZ_IPARAM_OBJSENSE ? QZERR_BAD_OBJECTIVE_SENSE
                                                            : QZERR_PARAM_OUT_OF_RANGE;
        EXPECT_EQ(set(p, r, v), expected) << v;
        EXPECT_EQ(snapshot(items(p)), before) << v;
      }
      ASSERT_EQ(set(p, r, r.xxx_dfl), 0);
      ++checked;
    }
  }
  EXPECT_GT(checked, 6 * 440);
}

TEST_F(SetGet, StringRowsOfTheStochasticBlock) {
  for (const ParItem& r : registry_rows()) {
    if (!is_string(r)) continue;
    SCOPED_TRACE(r.xxx_szid);
    char buf[QZ_MAX_PARAM_DESC_LENGTH] = "";
    EXPECT_EQ(QZsetModelStocParameterChar(model, r.xxx_id, "S%04d"), 0);
    EXPECT_EQ(QZgetModelStocParameterChar(model, r.xxx_id, buf), 0);
    EXPECT_STREQ(buf, "S%04d");
    EXPECT_EQ(QZsetEnvStocParameter(env, r.xxx_id, const_cast<char*>("T%d")), 0);
    EXPECT_EQ(QZgetEnvParameter(env, r.xxx_id, buf), 0);
    EXPECT_STREQ(buf, "T%d");
    // A format that does not take exactly one integer would break name generation.
    for (const char* bad : {"no number", "%s", "%d-%d", "%f"}) {
      EXPECT_EQ(QZsetModelStocParameterChar(model, r.xxx_id, bad), QZERR_PARAM_OUT_OF_RANGE);
      EXPECT_EQ(QZgetModelStocParameterChar(model, r.xxx_id, buf), 0);
      EXPECT_STREQ(buf, "S%04d");
    }
    EXPECT_EQ(QZgetDataType(model, r.xxx_id), 0);
  }
}

TEST_F(SetGet, EnvironmentValuesReachOnlyModelsCreatedLater) {
  for (const ParItem& r : registry_rows()) {
    if (!settable_at(r, QZ_PARCLASS_ENV) || !settable_at(r, QZ_PARCLASS_MODEL) || is_string(r))
      continue;
    auto v = other_value(r);
    if (!v) continue;
    SCOPED_TRACE(r.xxx_szid);
    const double before = par_value(*gss_getitem_by_id(model->AllPamItems, r.xxx_id));
    int iv = static_cast<int>(*v);
    double dv = *v;
    ASSERT_EQ(QZsetEnvParameter(env, r.xxx_id,
                                r.xxx_type == QZ_INT_PARAMETER_TYPE ? static_cast<void*>(&iv)
                                                                    : static_cast<void*>(&dv)),
              0);
    QZmodel later = new_model();
    EXPECT_EQ(par_value(*gss_getitem_by_id(later->AllPamItems, r.xxx_id)), *v);
    EXPECT_EQ(par_value(*gss_getitem_by_id(model->AllPamItems, r.xxx_id)), before);
    QZdeleteModel(&later);
  }
}

TEST_F(SetGet, VersionsReservedIdsUnknownIdsAndTypeMismatches) {
  int iv = -7;
  double dv = -7;
  // Version rows read the build constants and refuse every set.
  EXPECT_EQ(QZgetModelIntParameter(model, QZ_IPARAM_VER_NUMBER, &iv), 0);
  EXPECT_EQ(iv, 1300);
  EXPECT_EQ(QZgetEnvParameter(env, QZ_IPARAM_VER_BUILD, &iv), 0);
  EXPECT_EQ(iv, 4099);
  EXPECT_EQ(QZsetModelIntParameter(model, QZ_IPARAM_VER_MAJOR, 13), QZERR_PARAM_CANNOT_BE_SET);
  EXPECT_EQ(QZsetEnvParameter(env, QZ_IPARAM_VER_MINOR, &iv), QZERR_PARAM_CANNOT_BE_SET);
  // Reserved identifiers keep their numbers and do nothing.
  iv = 1;
  EXPECT_EQ(QZsetModelParameter(model, 4073, &iv), QZERR_NOT_SUPPORTED);
  EXPECT_EQ(QZgetModelParameter(model, 4075, &iv), QZERR_NOT_SUPPORTED);
  EXPECT_EQ(QZsetModelIntParameter(model, 4073, 1), 0);
  // Unknown identifiers: the untyped entries say so, the typed ones ignore them.
  EXPECT_EQ(QZsetModelParameter(model, 4033, &iv), QZERR_PARAM_OUT_OF_RANGE);
  EXPECT_EQ(QZgetEnvParameter(env, 77777, &iv), QZERR_PARAM_OUT_OF_RANGE);
  EXPECT_EQ(QZsetModelIntParameter(model, 77777, 1), 0);
  iv = -7;
  EXPECT_EQ(QZgetEnvIntParameter(env, 77777, &iv), 0);
  EXPECT_EQ(iv, -7);
  // A typed entry with an identifier of the other type is ignored.
  const auto before = snapshot(model->AllPamItems);
  EXPECT_EQ(QZsetModelIntParameter(model, QZ_DPARAM_SOLVER_FEASTOL, 1), 0);
  EXPECT_EQ(QZsetModelDouParameter(model, QZ_IPARAM_LP_SCALE, 2.0), 0);
  EXPECT_EQ(QZsetModelIntParameter(model, QZ_IPARAM_SOLVER_TIMLMT, 5), 0);  // a double row
  EXPECT_EQ(snapshot(model->AllPamItems), before);
  EXPECT_EQ(QZgetModelDouParameter(model, QZ_IPARAM_SOLVER_TIMLMT, &dv), 0);
  EXPECT_EQ(dv, -1);
  // The stochastic dispatch knows only stochastic identifiers.
  EXPECT_EQ(QZsetModelStocParameter(model, QZ_IPARAM_LP_SCALE, &iv), QZERR_PARAM_OUT_OF_RANGE);
  // Null handles and values.
  EXPECT_EQ(QZsetModelIntParameter(nullptr, QZ_IPARAM_LP_SCALE, 1), QZERR_ILLEGAL_NULL_POINTER);
  EXPECT_EQ(QZgetEnvDouParameter(nullptr, QZ_DPARAM_SOLVER_FEASTOL, &dv),
            QZERR_ILLEGAL_NULL_POINTER);
  EXPECT_EQ(QZsetModelParameter(model, QZ_IPARAM_LP_SCALE, nullptr), QZERR_ILLEGAL_NULL_POINTER);
  EXPECT_EQ(QZgetModelIntParameter(model, QZ_IPARAM_LP_SCALE, nullptr),
            QZERR_ILLEGAL_NULL_POINTER);
  EXPECT_EQ(QZgetEnvStocParameterChar(env, QZ_SPARAM_STOC_FMT_NODE_NAME, nullptr),
            QZERR_ILLEGAL_NULL_POINTER);
}

TEST_F(SetGet, ParametersWithSideEffects) {
  int iv = 0;
  // The objective sense: only 1 and -1, and the model follows it.
  EXPECT_EQ(QZsetModelIntParameter(model, QZ_IPARAM_OBJSENSE, 0), QZERR_BAD_OBJECTIVE_SENSE);
  EXPECT_EQ(QZsetModelIntParameter(model, QZ_IPARAM_OBJSENSE, QZ_MAX), 0);
  EXPECT_EQ(model->lp.dObjSense, QZ_MAX);
  EXPECT_EQ(model->SolverPam.objsense, QZ_MAX);
  EXPECT_EQ(QZsetEnvIntParameter(env, QZ_IPARAM_OBJSENSE, QZ_MAX), QZERR_PARAM_CANNOT_BE_SET);
  // Setting a cutoff switches its use on; an infinite one switches it off.
  EXPECT_EQ(QZsetModelDouParameter(model, QZ_DPARAM_SOLVER_CUTOFFVAL, 42.0), 0);
  EXPECT_EQ(model->SplexPam.solver_usecutoffval, 1);
  EXPECT_EQ(QZsetModelDouParameter(model, QZ_DPARAM_SOLVER_CUTOFFVAL, -1e30), 0);
  EXPECT_EQ(model->SplexPam.solver_usecutoffval, 0);
  EXPECT_EQ(QZsetEnvDouParameter(env, QZ_DPARAM_MIP_CUTOFFOBJ, -5.0), 0);
  EXPECT_EQ(env->BandBPam.mip_usecutoffobj, 1);
  // Limits take any negative value as "none".
  EXPECT_EQ(QZsetModelDouParameter(model, QZ_DPARAM_MIP_TIMLIM, -123.5), 0);
  EXPECT_EQ(model->BandBPam.mip_timlim, -1);
  EXPECT_EQ(QZsetModelIntParameter(model, QZ_IPARAM_MIP_TIMLIM, INT_MIN), 0);
  EXPECT_EQ(model->BandBPam.mip_timlim, -1);
  // Int and double forms of a limit share one value; the int form saturates.
  EXPECT_EQ(QZsetModelDouParameter(model, QZ_DPARAM_LP_ITRLMT, 1e12), 0);
  EXPECT_EQ(QZgetModelIntParameter(model, QZ_IPARAM_LP_ITRLMT, &iv), 0);
  EXPECT_EQ(iv, INT_MAX);
  EXPECT_EQ(QZsetModelIntParameter(model, QZ_IPARAM_LP_ITRLMT, 500), 0);
  EXPECT_EQ(model->SplexPam.lp_itrlmt, 500.0);
  // Ctrl-C permission takes only 0 and 1.
  EXPECT_EQ(QZsetModelIntParameter(model, QZ_IPARAM_ALLOW_CNTRLBREAK, 2),
            QZERR_PARAM_OUT_OF_RANGE);
  EXPECT_EQ(QZsetModelIntParameter(model, QZ_IPARAM_ALLOW_CNTRLBREAK, 1), 0);
}

TEST_F(SetGet, RangesAndRegistryQueries) {
  int lo = 0, hi = 0;
  double dlo = 0, dhi = 0;
  EXPECT_EQ(QZgetIntParameterRange(model, QZ_IPARAM_LP_SCALE, &lo, &hi), 0);
  EXPECT_EQ(lo, -1);
  EXPECT_EQ(hi, 3);
  EXPECT_EQ(QZgetDouParameterRange(model, QZ_DPARAM_SOLVER_FEASTOL, &dlo, &dhi), 0);
  EXPECT_EQ(dlo, 1e-10);
  EXPECT_EQ(dhi, 1e-4);
  EXPECT_EQ(QZgetIntParameterRange(model, QZ_DPARAM_SOLVER_FEASTOL, &lo, &hi), QZERR_INFO_NOT_AVAILABLE);
  EXPECT_EQ(QZgetDouParameterRange(model, 31337, &dlo, &dhi), QZERR_BAD_PARAM_ID);
  EXPECT_EQ(QZgetIntParameterRange(nullptr, QZ_IPARAM_LP_SCALE, &lo, &hi),
            QZERR_ILLEGAL_NULL_POINTER);

  int n = 0;
  ASSERT_EQ(QZgetParamCount(env, &n), 0);
  EXPECT_EQ(n, 454);
  for (int i = 0; i < n; ++i) {
    int id = 0;
    ASSERT_EQ(QZgetParamIdByIndex(env, i, &id), 0);
    char name[QZ_MAX_PARAM_NAME_LENGTH], shortDesc[QZ_MAX_PARAM_DESC_LENGTH],
        longDesc[QZ_MAX_PARAM_DESC_LENGTH];
    ASSERT_EQ(QZgetParamMacroName(env, id, name), 0);
    ASSERT_EQ(QZgetParamShortDesc(env, id, shortDesc), 0);
    ASSERT_EQ(QZgetParamLongDesc(env, id, longDesc), 0);
    EXPECT_STREQ(QZgetParamMacroNamePtr(env, id), name);
    EXPECT_STREQ(QZgetParamShortDescPtr(env, id), shortDesc);
    EXPECT_STREQ(QZgetParamLongDescPtr(env, id), longDesc);
    int type = -1, back = -1;
    ASSERT_EQ(QZgetParamMacroID(env, name, &type, &back), 0);
    EXPECT_EQ(back, id);
    EXPECT_EQ(QZgetDataType(model, id), type);
  }
  EXPECT_EQ(QZgetParamIdByIndex(env, n, &lo), QZERR_INDEX_OUT_OF_RANGE);
  EXPECT_EQ(QZgetParamMacroNamePtr(env, 31337), nullptr);
  char buf[QZ_MAX_PARAM_NAME_LENGTH];
  EXPECT_EQ(QZgetParamMacroName(env, 31337, buf), QZERR_BAD_PARAM_ID);
  EXPECT_EQ(QZgetDataType(model, 31337), -1);
  EXPECT_EQ(QZgetDataType(model, QZ_DINFO_POBJ), QZ_DOUBLE_PARAMETER_TYPE);
  EXPECT_EQ(QZgetDataType(model, QZ_IINFO_METHOD), QZ_INT_PARAMETER_TYPE);
  EXPECT_EQ(QZgetDataType(nullptr, QZ_DPARAM_MIP_INTTOL), QZ_DOUBLE_PARAMETER_TYPE);
}

TEST_F(SetGet, NamesResolveInAnyCaseAndThroughRenames) {
  int type = 0, id = 0;
  EXPECT_EQ(QZgetParamMacroID(env, "qz_dparam_solver_feastol", &type, &id), 0);
  EXPECT_EQ(id, QZ_DPARAM_SOLVER_FEASTOL);
  EXPECT_EQ(type, QZ_DOUBLE_PARAMETER_TYPE);
  EXPECT_EQ(QZgetParamMacroID(env, "QZ_IPARAM_ITRLMT", &type, &id), 0);
  EXPECT_EQ(id, QZ_IPARAM_SPLEX_ITRLMT);
  EXPECT_EQ(id, QZ_IPARAM_LP_ITRLMT);
  EXPECT_EQ(QZgetParamMacroID(env, "qz_iparam_nlp_msw_maxref", &type, &id), 0);
  EXPECT_EQ(id, QZ_IPARAM_NLP_MSW_POPSIZE);
  EXPECT_EQ(QZgetParamMacroID(env, "QZ_IPARAM_MIPTIMLIM", &type, &id), 0);
  EXPECT_EQ(id, QZ_IPARAM_MIP_TIMLIM);
  EXPECT_EQ(type, QZ_INT_PARAMETER_TYPE);
  // Renamed information keys are not parameters.
  EXPECT_EQ(QZgetParamMacroID(env, "QZ_DINFO_MIPOBJ", &type, &id), QZERR_BAD_PARAM_ID);
  EXPECT_EQ(QZgetParamMacroID(env, "QZ_IPARAM_NO_SUCH", &type, &id), QZERR_BAD_PARAM_ID);
  EXPECT_EQ(QZgetParamMacroID(env, nullptr, &type, &id), QZERR_ILLEGAL_NULL_POINTER);
}

TEST_F(SetGet, KeywordSearchWalksTheRegistry) {
  int start = 0, id = 0;
  std::vector<int> found;
  while (true) {
    ASSERT_EQ(QZsearchParamHasKeyword(env, "_GA_", &start, &id), 0);
    if (id < 0) break;
    found.push_back(id);
    ++start;
  }
  EXPECT_EQ(found.size(), 27u);
  EXPECT_EQ(found.front(), QZ_DPARAM_GA_CXOVER_PROB);
  EXPECT_EQ(start, 454);
  start = 0;
  ASSERT_EQ(QZsearchParamHasKeyword(env, "5320", &start, &id), 0);
  EXPECT_EQ(id, QZ_IPARAM_MIP_PRINTLEVEL);
  ++start;
  ASSERT_EQ(QZsearchParamHasKeyword(env, "5320", &start, &id), 0);
  EXPECT_EQ(id, -1);
  EXPECT_EQ(start, 454);
  EXPECT_EQ(QZsearchParamHasKeyword(env, "5320", &start, &id), QZERR_INDEX_OUT_OF_RANGE);
  start = 0;
  ASSERT_EQ(QZsearchParamHasKeyword(env, "lp_scale", &start, &id), 0);
  EXPECT_EQ(id, QZ_IPARAM_LP_SCALE);
}

TEST_F(SetGet, FortranTwinsPassEverythingByReference) {
  int id = QZ_IPARAM_MIP_PRINTLEVEL, iv = 6, out = 0, n = 0, type = 0;
  ASSERT_EQ(qzsetmodelintparameter_(&model, &id, &iv), 0);
  ASSERT_EQ(qzgetmodelintparameter_(&model, &id, &out), 0);
  EXPECT_EQ(out, 6);
  int did = QZ_DPARAM_MIP_INTTOL;
  double dv = 1e-8, dout = 0;
  ASSERT_EQ(qzsetenvdouparameter_(&env, &did, &dv), 0);
  ASSERT_EQ(qzgetenvparameter_(&env, &did, &dout), 0);
  EXPECT_EQ(dout, 1e-8);
  ASSERT_EQ(qzgetparamcount_(&env, &n), 0);
  EXPECT_EQ(n, 454);
  char name[QZ_MAX_PARAM_NAME_LENGTH];
  ASSERT_EQ(qzgetparammacroname_(&env, &id, name), 0);
  EXPECT_STREQ(name, "QZ_IPARAM_MIP_PRINTLEVEL");
  ASSERT_EQ(qzgetparammacroid_(&env, "qz_dparam_mip_inttol", &type, &n), 0);
  EXPECT_EQ(n, QZ_DPARAM_MIP_INTTOL);
}

}  // namespace
}  // namespace zento::test
