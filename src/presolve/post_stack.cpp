// Growing stacks of the undo log and their top-down reader.
#include "presolve/post_stack.h"

namespace zento::presolve {

void PostStack::push_ints(const std::vector<int>& v) {
  ints_.insert(ints_.end(), v.begin(), v.end());
  ints_.push_back(static_cast<int>(v.size()));
}

void PostStack::push_dbls(const std::vector<double>& v) {
  dbls_.insert(dbls_.end(), v.begin(), v.end());
  ints_.push_back(static_cast<int>(v.size()));
}

void PostStack::clear() {
  ints_.clear();
  dbls_.clear();
  records_ = 0;
  counts_.fill(0);
}

void PostStack::shrink() {
  ints_.shrink_to_fit();
  dbls_.shrink_to_fit();
}

int PostReader::pop_int() {
  if (ni_ == 0) {
    failed_ = true;
    return 0;
  }
  return s_.ints()[--ni_];
}

double PostReader::pop_dbl() {
  if (nd_ == 0) {
    failed_ = true;
    return 0.0;
  }
  return s_.dbls()[--nd_];
}

void PostReader::pop_ints(std::vector<int>& out) {
  const int n = pop_int();
  if (n < 0 || static_cast<size_t>(n) > ni_) {
    failed_ = true;
    out.clear();
    return;
  }
  out.assign(s_.ints().begin() + static_cast<long>(ni_ - n),
             s_.ints().begin() + static_cast<long>(ni_));
  ni_ -= static_cast<size_t>(n);
}

void PostReader::pop_dbls(std::vector<double>& out) {
  const int n = pop_int();
  if (n < 0 || static_cast<size_t>(n) > nd_) {
    failed_ = true;
    out.clear();
    return;
  }
  out.assign(s_.dbls().begin() + static_cast<long>(nd_ - n),
             s_.dbls().begin() + static_cast<long>(nd_));
  nd_ -= static_cast<size_t>(n);
}

}  // namespace zento::presolve
