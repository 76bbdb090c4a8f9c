// The mixed-integer entries: thin shims over the search driver.
#include "api/guard.h"
#include "mip/mip.h"

extern "C" {

int QZsolveMIP(QZmodel model, int* pnStatus) {
  QZ_GUARD({
    if (model == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
    return zento::mip::solve_mip(*model, pnStatus);
  });
}

int QZbnbSolve(QZmodel model, int* pnStatus) { return QZsolveMIP(model, pnStatus); }

int QZgetBestBounds(QZmodel model, double* pdBestObj, double* pdBestBound) {
  QZ_GUARD({
    if (model == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
    if (!model->mipsol || model->callLevel < 0) return QZERR_INFO_NOT_AVAILABLE;
    const zento::MipSol& ms = *model->mipsol;
    if (pdBestObj) *pdBestObj = ms.obj;
    if (pdBestBound) *pdBestBound = ms.bestBound;
    return 0;
  });
}

}  // extern "C"
