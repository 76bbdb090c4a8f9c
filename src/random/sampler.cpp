// Samplers: life cycle in the environment's list, parameters, discrete tables, user laws and
// the evaluation of the distribution functions.
#include "random/sampler.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <numeric>

#include "core/env.h"
#include "core/errors.h"
#include "random/randgen.h"
#include "zento_random.h"

namespace zento::random {

void SampleDeleter::operator()(QZsample_s* s) const {
  if (s == nullptr) return;
  if (s->rg != nullptr) rg_remove_user(s->rg, s);
  delete s;
}

QZsample create_sample(QZenv env, int dist, bool listed, int* err) {
  *err = 0;
  const DistInfo* info = find_dist(dist);
  if (info == nullptr && dist != QZ_DIST_DISCRETE && dist != QZ_DIST_USER) {
    *err = QZERR_DIST_BAD_TYPE;
    return nullptr;
  }
  auto* s = new (std::nothrow) QZsample_s();
  if (s == nullptr) {
    *err = QZERR_OUT_OF_MEMORY;
    return nullptr;
  }
  s->env = listed ? env : nullptr;
  s->dist = dist;
  s->info = info;
  s->params.fill(QZ_INFINITY);
  if (listed) {
    try {
      std::lock_guard<std::mutex> lock(env->sampleMutex);
      env->sampleList.push_back(s);
    } catch (const std::bad_alloc&) {
      delete s;
      *err = QZERR_OUT_OF_MEMORY;
      return nullptr;
    }
  }
  return s;
}

int delete_sample(QZsample* ps) {
  if (ps == nullptr || *ps == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  QZsample s = *ps;
  if (QZenv env = s->env; env != nullptr) {
    std::lock_guard<std::mutex> lock(env->sampleMutex);
    auto& list = env->sampleList;
    list.erase(std::remove(list.begin(), list.end(), s), list.end());
    // No sampler keeps a dangling child.
    for (QZsample other : list) {
      auto& ch = other->children;
      if (std::find(ch.begin(), ch.end(), s) != ch.end()) {
        ch.erase(std::remove(ch.begin(), ch.end(), s), ch.end());
        other->flags &= ~kPointsCurrent;
      }
    }
  }
  SampleDeleter()(s);
  *ps = nullptr;
  return 0;
}

void free_env_samplers(QZenv env) {
  std::vector<QZsample> list;
  {
    std::lock_guard<std::mutex> lock(env->sampleMutex);
    list.swap(env->sampleList);
  }
  for (QZsample s : list) SampleDeleter()(s);
}

int param_count(const QZsample_s& s) {
  if (s.info != nullptr) return s.info->nparams;
  return s.dist == QZ_DIST_USER ? kMaxParams : 0;
}

namespace {

void invalidate(QZsample s) {
  s->flags &= ~kPointsCurrent;
  s->li.reset();
}

int check_params_set(const QZsample_s& s) {
  if (s.info == nullptr) return 0;
  const unsigned need = (1u << s.info->nparams) - 1u;
  return (s.setMask & need) == need ? 0 : QZERR_SAMP_DIST_PARAM_NOT_SET;
}

// Discrete table: kinds by value lookup in the sorted table.
int eval_table(const QZsample_s& s, int kind, double x, double* out) {
  if (s.tableVals.empty()) return QZERR_NO_DISCRETE_PDF_TABLE;
  const auto& v = s.tableVals;
  switch (kind) {
    case QZ_FUNC_PDF: {
      QZ_CALL(std::isnan(x) ? QZERR_DIST_BAD_VALUE : 0);
      const auto it = std::lower_bound(v.begin(), v.end(), x);
      *out = (it != v.end() && *it == x) ? s.tableProbs[it - v.begin()] : 0.0;
      return 0;
    }
    case QZ_FUNC_CDF: {
      QZ_CALL(std::isnan(x) ? QZERR_DIST_BAD_VALUE : 0);
      const auto it = std::upper_bound(v.begin(), v.end(), x);
      *out = it == v.begin() ? 0.0 : s.tableCum[it - v.begin() - 1];
      return 0;
    }
    case QZ_FUNC_CDFINV: {
      if (!(x >= 0.0 && x <= 1.0)) return QZERR_DIST_BAD_PROBABILITY;
      const auto it = std::lower_bound(s.tableCum.begin(), s.tableCum.end(), x);
      *out = it == s.tableCum.end() ? v.back() : v[it - s.tableCum.begin()];
      return 0;
    }
    default:
      return QZ_FUNC_PDFDIFF == kind ? QZERR_NOT_SUPPORTED : QZERR_SAMP_BAD_CALL;
  }
}

}  // namespace

int set_param(QZsample s, int i, double v) {
  if (i < 0 || i >= param_count(*s)) return QZERR_INDEX_OUT_OF_RANGE;
  s->params[i] = v;
  s->setMask |= 1u << i;
  s->nParams = std::max(s->nParams, i + 1);
  invalidate(s);
  return 0;
}

int set_rg(QZsample s, QZrandGen rg) {
  if (s->rg == rg) return 0;
  if (s->rg != nullptr) rg_remove_user(s->rg, s);
  s->rg = rg;
  if (rg != nullptr) rg_add_user(rg, s);
  return 0;
}

int load_table(QZsample s, int n, const double* probs, const double* vals) {
  if (s->dist != QZ_DIST_DISCRETE) return QZERR_DIST_BAD_TYPE;
  if (n < 1) return QZERR_DIST_BAD_PARAMS;
  double sum = 0.0;
  for (int i = 0; i < n; ++i) {
    if (!(probs[i] >= 0.0) || !std::isfinite(probs[i])) return QZERR_DIST_BAD_PROBABILITY;
    if (!std::isfinite(vals[i])) return QZERR_DIST_BAD_VALUE;
    sum += probs[i];
  }
  if (std::fabs(sum - 1.0) > 1e-6) return QZERR_DIST_BAD_PROBABILITY;
  std::vector<int> order(n);
  std::iota(order.begin(), order.end(), 0);
  std::stable_sort(order.begin(), order.end(), [&](int a, int b) { return vals[a] < vals[b]; });
  std::vector<double> tv, tp, tc;
  tv.reserve(n);
  tp.reserve(n);
  for (int k : order) {
    // Equal values pool their probabilities.
    if (!tv.empty() && tv.back() == vals[k]) {
      tp.back() += probs[k] / sum;
    } else {
      tv.push_back(vals[k]);
      tp.push_back(probs[k] / sum);
    }
  }
  tc.resize(tp.size());
  std::partial_sum(tp.begin(), tp.end(), tc.begin());
  tc.back() = 1.0;
  s->tableVals.swap(tv);
  s->tableProbs.swap(tp);
  s->tableCum.swap(tc);
  invalidate(s);
  return 0;
}

int eval_user(QZsample s, int kind, const double* in, int nin, double* out) {
  if (s->dist != QZ_DIST_USER) return QZERR_DIST_BAD_TYPE;
  if (s->userFunc == nullptr) return QZERR_SAMP_NO_USER_DIST;
  const int rc = s->userFunc(s, kind, const_cast<double*>(in), nin, out, s->userData);
  return rc == 0 ? 0 : rc;
}

int eval(QZsample s, int kind, double x, double* out) {
  if (s->dist == QZ_DIST_DISCRETE) return eval_table(*s, kind, x, out);
  if (s->dist == QZ_DIST_USER) {
    if (kind < QZ_FUNC_PDF || kind > QZ_FUNC_PDFDIFF) return QZERR_SAMP_BAD_CALL;
    if (!s->children.empty()) return QZERR_SAMP_BAD_CALL;
    return eval_user(s, kind, &x, 1, out);
  }
  QZ_CALL(check_params_set(*s));
  const DistInfo& d = *s->info;
  DistFn fn = nullptr;
  switch (kind) {
    case QZ_FUNC_PDF: fn = d.pdf; break;
    case QZ_FUNC_CDF: fn = d.cdf; break;
    case QZ_FUNC_CDFINV: fn = d.inv; break;
    case QZ_FUNC_PDFDIFF: fn = d.dpdf; break;
    default: return QZERR_SAMP_BAD_CALL;
  }
  if (fn == nullptr) return QZERR_NOT_SUPPORTED;
  return fn(x, s->params.data(), out);
}

int add_child(QZsample s, QZsample child) {
  if (s->dist != QZ_DIST_USER) return QZERR_DIST_BAD_TYPE;
  if (child == s || child->env != s->env) return QZERR_SAMP_BAD_CALL;
  if (std::find(s->children.begin(), s->children.end(), child) != s->children.end()) {
    return QZERR_SAMP_SOURCE_ALREADY_SET;
  }
  // Refuse a cycle: s must not be reachable from the child.
  std::vector<QZsample> stack{child};
  while (!stack.empty()) {
    QZsample c = stack.back();
    stack.pop_back();
    if (c == s) return QZERR_SAMP_BAD_CALL;
    for (QZsample g : c->children) stack.push_back(g);
  }
  s->children.push_back(child);
  invalidate(s);
  return 0;
}

const std::vector<double>& view_points(const QZsample_s& s) {
  return s.ciPoints.empty() ? s.points : s.ciPoints;
}

int load_points(QZsample s, int n, const double* pts) {
  if (n < 1) return QZERR_SAMP_SIZE_TOO_SMALL;
  std::vector<double> p(pts, pts + n);
  double mx = 0.0;
  for (double v : p) {
    if (std::isnan(v)) return QZERR_DIST_BAD_VALUE;
    mx = std::max(mx, std::fabs(v));
  }
  s->points.swap(p);
  s->ciPoints.clear();
  s->corr.reset();
  s->corrIndex = -1;
  s->flags = kPointsCurrent;
  s->method = -1;
  s->genRg = nullptr;
  s->maxAbs = mx;
  s->used = 0;
  return 0;
}

int next_point(QZsample s, double* out) {
  const std::vector<double>& v = view_points(*s);
  if (v.empty()) return QZERR_SAMP_NOT_GENERATED;
  if (s->used >= static_cast<int>(v.size())) return QZERR_SAMP_ALL_POINTS_USED;
  *out = v[s->used++];
  return 0;
}

namespace {

// Uniforms of one sampling method: Monte Carlo, Latin hypercube, antithetic, or both.
void draw_uniforms(QZrandGen rg, int method, int n, std::vector<double>& u) {
  u.resize(n);
  constexpr double kLo = 0x1p-53;
  auto open = [](double v) { return v < kLo ? kLo : (v > 1.0 - kLo ? 1.0 - kLo : v); };
  if (method == QZ_MONTECARLO) {
    for (int i = 0; i < n; ++i) u[i] = draw_open(rg);
    return;
  }
  if (method == QZ_ANTITHETIC) {
    for (int i = 0; i < n; i += 2) {
      const double r = draw_open(rg);
      u[i] = r;
      if (i + 1 < n) u[i + 1] = 1.0 - r;
    }
    return;
  }
  std::vector<int> perm;
  randperm(rg, perm, n);
  if (method == QZ_LATIN_ANTITHETIC) {
    for (int i = 0; i < n; i += 2) {
      const double r = draw_uniform(rg);
      u[i] = open((perm[i] - 1 + r) / n);
      if (i + 1 < n) u[i + 1] = open((perm[i + 1] - r) / n);
    }
    return;
  }
  for (int i = 0; i < n; ++i) u[i] = open((perm[i] - 1 + draw_uniform(rg)) / n);
}

}  // namespace

int generate(QZsample s, int method, int n) {
  if (s->rg == nullptr) return QZERR_RG_NOT_SET;
  if (s->rg->seed < 1) return QZERR_RG_SEED_NOT_SET;
  if (n < 1) return QZERR_SAMP_SIZE_TOO_SMALL;
  if (method < 0 || method > 3) method = QZ_LATINSQUARE;
  if ((s->flags & kPointsCurrent) && static_cast<int>(s->points.size()) == n &&
      s->method == method && s->genRg == s->rg && s->genEpoch == s->rg->epoch) {
    return 0;
  }
  std::vector<double> pts(n);
  if (s->dist == QZ_DIST_USER && !s->children.empty()) {
    if (s->userFunc == nullptr) return QZERR_SAMP_NO_USER_DIST;
    for (QZsample c : s->children) {
      QZ_CALL(set_rg(c, s->rg));
      QZ_CALL(generate(c, method, n));
    }
    std::vector<double> args(s->children.size());
    for (int i = 0; i < n; ++i) {
      for (size_t k = 0; k < args.size(); ++k) args[k] = view_points(*s->children[k])[i];
      QZ_CALL(eval_user(s, QZ_FUNC_CDFINV, args.data(), static_cast<int>(args.size()), &pts[i]));
    }
  } else {
    if (s->dist == QZ_DIST_DISCRETE && s->tableVals.empty()) return QZERR_NO_DISCRETE_PDF_TABLE;
    if (s->dist == QZ_DIST_USER && s->userFunc == nullptr) return QZERR_SAMP_NO_USER_DIST;
    QZ_CALL(check_params_set(*s));
    // Parameters are checked once, before any draw.
    if (s->info != nullptr) {
      double probe = 0.0;
      QZ_CALL(eval(s, QZ_FUNC_CDFINV, 0.5, &probe));
    }
    std::vector<double> u;
    draw_uniforms(s->rg, method, n, u);
    for (int i = 0; i < n; ++i) QZ_CALL(eval(s, QZ_FUNC_CDFINV, u[i], &pts[i]));
  }
  double mx = 0.0;
  if (s->dist == QZ_DIST_DISCRETE) {
    for (double v : s->tableVals) mx = std::max(mx, std::fabs(v));
  } else {
    for (double v : pts) mx = std::max(mx, std::fabs(v));
  }
  s->points.swap(pts);
  s->ciPoints.clear();
  s->corr.reset();
  s->corrIndex = -1;
  s->flags = kPointsCurrent;
  s->method = method;
  s->genRg = s->rg;
  s->genEpoch = s->rg->epoch;
  s->maxAbs = mx;
  s->used = 0;
  return 0;
}

}  // namespace zento::random
