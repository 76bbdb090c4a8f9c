// placeholder
#include "lp/factor/lu_engine.h"
#include "lp/factor/slu.h"
namespace zento::lu {
std::unique_ptr<LuEngine> make_slu(int m, LuOptions* opt, LuColumnFn datacol, void* host) {
  return std::make_unique<Slu>(m, opt, datacol, host);
}
std::unique_ptr<LuEngine> make_clu(int m, LuOptions* opt, LuColumnFn datacol, void* host) {
  return nullptr;
}
}
