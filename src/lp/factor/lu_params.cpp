// Options of a factor object from the simplex parameter block.
#include "core/params/param_blocks.h"
#include "lp/factor/lu.h"

namespace zento::lu {

int lu_options_from_params(const SplexParams& p, LuOptions* opt) {
  struct Item {
    int id;
    double v;
  };
  const Item items[] = {
      {kParLuNumCandits, static_cast<double>(p.lu_num_candits)},
      {kParLuMaxUpdates, static_cast<double>(p.lu_max_updates)},
      {kParLuPrintLevel, static_cast<double>(p.lu_print_level)},
      {kParLuUpdateType, static_cast<double>(p.lu_update_type)},
      {kParLuMode, static_cast<double>(p.lu_mode)},
      {kParLuPivmod, static_cast<double>(p.lu_pivmod)},
      {kParLuEpsDiag, p.lu_eps_diag},
      {kParLuEpsNonz, p.lu_eps_nonz},
      {kParLuEpsPivabs, p.lu_eps_pivabs},
      {kParLuEpsPivrel, p.lu_eps_pivrel},
      {kParLuIniRcond, p.lu_ini_rcond},
      {kParLuSpvtolUpdate, p.lu_spvtol_update},
      {kParLuSpvtolFtran, p.lu_spvtol_ftran},
      {kParLuSpvtolBtran, p.lu_spvtol_btran},
      {kParLuCore, static_cast<double>(p.lu_core)},
  };
  for (const Item& it : items)
    if (const int rc = lu_options_set_param(*opt, it.id, it.v)) return rc;
  return 0;
}

}  // namespace zento::lu
