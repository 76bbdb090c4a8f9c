// The post stack: the undo log of a presolver, shared by LP and MIP presolve.
//
// A record is a run of integers and doubles pushed on two growing stacks, closed by its type
// code pushed last on the integer stack. The walk back reads the type code first and then the
// fields in the reverse order of their push, so records need no index and lists carry their
// length after their items. A reader that meets an unknown type or runs dry stops the walk;
// the caller then treats the rebuilt point as unproven.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

namespace zento::presolve {

class PostStack {
 public:
  void push_int(int v) { ints_.push_back(v); }
  void push_dbl(double v) { dbls_.push_back(v); }
  // Closes a record.
  void push_type(int type) {
    ints_.push_back(type);
    ++records_;
    if (type >= 0 && type < kTypes) ++counts_[type];
  }
  // Items first, then the count: the reader meets the count first.
  void push_ints(const std::vector<int>& v);
  void push_dbls(const std::vector<double>& v);

  size_t int_size() const { return ints_.size(); }
  size_t dbl_size() const { return dbls_.size(); }
  int records() const { return records_; }
  // Records of one type on the stack (types below kTypes).
  int count(int type) const { return type >= 0 && type < kTypes ? counts_[type] : 0; }
  static constexpr int kTypes = 32;
  bool empty() const { return ints_.empty(); }
  void clear();
  // Releases spare capacity once the presolve is done.
  void shrink();

  const std::vector<int>& ints() const { return ints_; }
  const std::vector<double>& dbls() const { return dbls_; }

 private:
  std::vector<int> ints_;
  std::vector<double> dbls_;
  int records_ = 0;
  std::array<int, kTypes> counts_{};
};

// Reads a stack from the top down without changing it.
class PostReader {
 public:
  explicit PostReader(const PostStack& s) : s_(s), ni_(s.ints().size()), nd_(s.dbls().size()) {}
  bool done() const { return ni_ == 0; }
  bool failed() const { return failed_; }
  // The type code of the next record (0 at the bottom or after a failure).
  int next_type() { return pop_int(); }
  int pop_int();
  double pop_dbl();
  // Lists pushed with push_ints / push_dbls; items come back in push order.
  void pop_ints(std::vector<int>& out);
  void pop_dbls(std::vector<double>& out);

 private:
  const PostStack& s_;
  size_t ni_, nd_;
  bool failed_ = false;
};

}  // namespace zento::presolve
