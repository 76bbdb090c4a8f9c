// The one guard every public entry runs in: nothing is thrown into the host.
#pragma once

#include <new>

#include "core/model.h"
#include "zento.h"

namespace zento::api {

template <class F>
int guarded(F&& body) noexcept {
  try {
    return body();
  } catch (const std::bad_alloc&) {
    return QZERR_OUT_OF_MEMORY;
  } catch (...) {
    return QZERR_INTERNAL_ERROR;
  }
}

// The tests every data query makes first, in this order.
inline int check_loaded(QZmodel m) {
  if (m == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (m->modelState == QZ_STATUS_UNLOADED || m->callLevel < 0) return QZERR_INFO_NOT_AVAILABLE;
  return 0;
}

template <class T>
void copy_out(const std::vector<T>& v, T* out) {
  if (out != nullptr && !v.empty()) std::copy(v.begin(), v.end(), out);
}

}  // namespace zento::api

#define QZ_GUARD(...) return ::zento::api::guarded([&]() -> int __VA_ARGS__)
