// Entries that read and write model files and side files.
#include <cstring>

#include "api/guard.h"
#include "io/io.h"

using namespace zento;

namespace {

int check_name(QZmodel m, const char* name) {
  if (m == nullptr || name == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  return 0;
}

}  // namespace

extern "C" {

int QZreadMPSFile(QZmodel model, const char* pszFname, int nFormat) {
  return QZreadMPSFileFR(model, pszFname, nFormat, 0, 0);
}

int QZreadMPSFileFR(QZmodel model, const char* pszFname, int nFormat, int nObjIndex,
                    int nKeepFreeRows) {
  if (int rc = check_name(model, pszFname)) return rc;
  QZ_GUARD({ return io::read_mps_file(*model, pszFname, nFormat, nObjIndex, nKeepFreeRows); });
}

int QZwriteMPSFile(QZmodel model, const char* pszFname, int nFormat) {
  if (int rc = check_name(model, pszFname)) return rc;
  QZ_GUARD({ return io::write_mps_file(*model, pszFname, nFormat); });
}

int QZwriteDualMPSFile(QZmodel model, const char* pszFname, int nFormat, int nObjSense) {
  if (model == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (model->modelState == QZ_STATUS_UNLOADED) return QZERR_INFO_NOT_AVAILABLE;
  if (nObjSense != 1 && nObjSense != -1) return QZERR_BAD_OBJECTIVE_SENSE;
  if (pszFname == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  (void)nFormat;
  // The dual model construction belongs to the optimize driver and is not in this build.
  return QZERR_NOT_SUPPORTED;
}

}  // extern "C"
