// What the dispatch layer needs of an engine, and the small tools both engines share: the work
// vector with its index list, stamp marks and the depth-first reach of a sparse right-hand side.
#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "lp/factor/lu.h"

namespace zento::lu {

// Dense values plus the list of positions that may be nonzero. Between solves all values are 0
// and the list is empty.
struct WorkVec {
  std::vector<double> x;
  std::vector<int> list;
  int n = 0;
  void resize(int m) {
    x.assign(m, 0.0);
    list.assign(m, 0);
    n = 0;
  }
  void clear_listed() {
    for (int k = 0; k < n; ++k) x[list[k]] = 0.0;
    n = 0;
  }
  void clear_all() {
    std::fill(x.begin(), x.end(), 0.0);
    n = 0;
  }
};

// Visited marks that reset in O(1): a node is marked when mark[node] == stamp.
struct StampMarks {
  std::vector<int> mark;
  int stamp = 0;
  void resize(int m) {
    mark.assign(m, 0);
    stamp = 0;
  }
  int next() {
    if (++stamp == 0x7fffffff) {
      std::fill(mark.begin(), mark.end(), 0);
      stamp = 1;
    }
    return stamp;
  }
  bool test_set(int i) {
    if (mark[i] == stamp) return true;
    mark[i] = stamp;
    return false;
  }
};

// Scratch of the depth-first search.
struct ReachWork {
  std::vector<int> stack, pos, out;
  void resize(int m) {
    stack.assign(m, 0);
    pos.assign(m, 0);
    out.assign(m, 0);
  }
};

// Gilbert-Peierls reach: the nodes reachable from seeds[0..nseeds) in the graph given by
// adj(node) -> {begin, end} of neighbour nodes, in topological order in out[top..m). Returns top,
// or -1 when more than `limit` nodes were found (the caller then solves densely). Marks use a
// fresh stamp; the marks of visited nodes are left set.
template <class Adj>
int dfs_reach(int m, int nseeds, const int* seeds, Adj adj, StampMarks& mk, ReachWork& w,
              int limit) {
  mk.next();
  int top = m;
  int found = 0;
  int* stack = w.stack.data();
  int* pos = w.pos.data();
  int* out = w.out.data();
  for (int s = 0; s < nseeds; ++s) {
    const int seed = seeds[s];
    if (mk.test_set(seed)) continue;
    if (++found > limit) return -1;
    int head = 0;
    stack[0] = seed;
    pos[0] = 0;
    while (head >= 0) {
      const int node = stack[head];
      auto [b, e] = adj(node);
      int p = pos[head];
      bool pushed = false;
      for (; b + p < e; ++p) {
        const int nb = b[p];
        if (mk.test_set(nb)) continue;
        if (++found > limit) return -1;
        pos[head] = p + 1;
        ++head;
        stack[head] = nb;
        pos[head] = 0;
        pushed = true;
        break;
      }
      if (!pushed) {
        out[--top] = node;
        --head;
      }
    }
  }
  return top;
}

// An engine behind the dispatch layer. The base holds what both engines report.
class LuEngine {
 public:
  LuEngine(int m, LuOptions* opt, LuColumnFn datacol, void* host)
      : m_(m), opt_(opt), datacol_(datacol), host_(host) {}
  virtual ~LuEngine() = default;

  // Factors the columns rbas[0..m); returns stat.
  virtual int factor(const int* rbas) = 0;
  // B x = b (out by slot) and B^T y = c (out by row). `dense_out` asks for the dense form.
  virtual int ftran(const SpVec& in, SpVec& out, bool save, bool dense_out) = 0;
  virtual int btran(const SpVec& in, SpVec& out, bool dense_out) = 0;
  virtual int update(int slot, double pivcoe, int dir) = 0;
  // Solves in caller storage (see SvRef). `pos_order` lists the result by position, as a
  // dense result would; otherwise in the order the solve met the entries. `drop` joins the
  // engine's zero tolerance. Returns stat; *cnt_out gets the count above the zero tolerance.
  virtual int ftran_sv(SvRef v, bool save, bool pos_order, double drop, int* cnt_out);
  virtual int btran_sv(SvRef v, bool pos_order, double drop, int* cnt_out);
  // Two FTRANs against the same factor, v1 saved as the spike of the next update: v1 is
  // stored at once, v2 stays pending until ftran2_finish (or ftran2_drop), so that other
  // solves may come between as if v2 were solved after them. Results are those of ftran_sv.
  virtual int ftran2_sv(SvRef v1, bool pos1, SvRef v2, double drop, int* cnt1);
  virtual int ftran2_finish(SvRef v2, bool pos2, double drop, int* cnt2);
  virtual void ftran2_drop() { pending_sv_ = false; }
  virtual int64_t lnonz() const = 0;
  virtual int64_t unonz() const = 0;
  virtual int64_t pnonz() const = 0;
  virtual int64_t spsize() const = 0;
  virtual int wfact(int min_frequency) const = 0;
  virtual int npcand() const = 0;
  virtual void options_changed() {}
  // Largest over smallest |pivot| of the current factor.
  virtual double condest2() const {
    return min_piv_ > 0.0 && min_piv_ < 1e30 ? max_piv_ / min_piv_ : 1e30;
  }
  virtual int tpos() { return 0; }
  virtual int reset_sparse_work() { return 0; }
  virtual int64_t sparse_work_len() const { return 0; }

  int m() const { return m_; }
  int stat() const { return stat_; }
  int updates() const { return nupdates_; }
  int rank() const { return rank_; }
  double rcond() const { return rcond_; }
  double umax() const { return umax_; }
  double min_piv() const { return min_piv_; }
  double max_piv() const { return max_piv_; }
  double bnorm1() const { return bnorm1_; }
  double bmax() const { return bmax_; }
  const std::vector<int>& sing_rows() const { return sing_rows_; }
  const std::vector<int>& sing_slots() const { return sing_slots_; }
  // Counters of the stability loop.
  int tot = 0, ok = 0, stab = 0;

 protected:
  int m_;
  LuOptions* opt_;
  LuColumnFn datacol_;
  void* host_;
  int stat_ = kLuNotFactored;
  int nupdates_ = 0;
  int rank_ = 0;
  double rcond_ = 0.0;
  double umax_ = 0.0;
  double min_piv_ = 1e30;
  double max_piv_ = 0.0;
  double bnorm1_ = 0.0;
  double bmax_ = 0.0;
  std::vector<int> sing_rows_, sing_slots_;
  SpVec sv_in_, sv_out_;  // the list-slot records of the generic in-place solves
  bool pending_sv_ = false;  // a second vector of ftran2_sv awaits its solve
};

// Loads a vector into a work vector, keeping the list when the input is sparse. Entries of a
// dense input are all listed as "unknown" (n = -1 marks the dense state).
inline void load_work(const SpVec& in, WorkVec& w, const int* map) {
  if (in.n < 0) {
    const int m = static_cast<int>(w.x.size());
    if (map) {
      for (int i = 0; i < m; ++i) w.x[map[i]] = in.val[i];
    } else {
      std::copy(in.val.begin(), in.val.begin() + m, w.x.begin());
    }
    w.n = -1;
    return;
  }
  w.n = 0;
  for (int k = 0; k < in.n; ++k) {
    const int i = map ? map[in.idx[k]] : in.idx[k];
    if (w.x[i] == 0.0) w.list[w.n++] = i;
    w.x[i] += in.val[k];
    if (w.x[i] == 0.0) w.x[i] = 1e-100;  // keep the entry listed once
  }
}

// Moves a caller vector into a work vector (position i to map[i], or i), leaving the caller's
// values zero; the same entries as load_work of its list-slot copy.
void load_work_sv(SvRef v, WorkVec& w, const int* map);
// Moves a work vector into a caller vector (position i to map[i], or i; `inv` the inverse map)
// and clears it. Returns the number of entries above `eps` (what store_work would list); keeps
// those above `drop`.
int store_work_sv(WorkVec& w, SvRef v, const int* map, const int* inv, bool pos_order,
                  double eps, double drop);

// Writes a work vector out, mapping position i to map[i] (or i), and clears it.
void store_work(WorkVec& w, SpVec& out, const int* map, bool dense_out, double eps);

// Creates the engine for opt.lucore, or null (QZERR_NOT_SUPPORTED in *err).
std::unique_ptr<LuEngine> make_slu(int m, LuOptions* opt, LuColumnFn datacol, void* host);
std::unique_ptr<LuEngine> make_clu(int m, LuOptions* opt, LuColumnFn datacol, void* host);

// The two steps rules of the threshold ladder.
double next_pivot_threshold(double cur, bool stepped);

}  // namespace zento::lu
