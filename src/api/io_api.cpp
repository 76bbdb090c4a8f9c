// Entries that read and write model files and side files.
#include <cstring>

#include "api/guard.h"
#include "io/text_formats.h"
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
  if (model == nullptr || pszFname == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  QZ_GUARD({
    return io::write_dual_model(*model, nObjSense, [&](const Imodel& dual) {
      return io::write_mps_file(dual, pszFname, nFormat);
    });
  });
}

int QZwriteBasis(QZmodel model, const char* pszFname, int nFormat) {
  if (int rc = check_name(model, pszFname)) return rc;
  QZ_GUARD({ return io::write_basis(*model, pszFname, nFormat); });
}

int QZreadBasis(QZmodel model, const char* pszFname, int nFormat) {
  if (int rc = check_name(model, pszFname)) return rc;
  QZ_GUARD({ return io::read_basis(*model, pszFname, nFormat); });
}

int QZreadVarStartPoint(QZmodel model, const char* pszFname) {
  if (int rc = check_name(model, pszFname)) return rc;
  QZ_GUARD({ return io::read_var_start_point(*model, pszFname); });
}

int QZreadVarPriorities(QZmodel model, const char* pszFname) {
  if (int rc = check_name(model, pszFname)) return rc;
  QZ_GUARD({ return io::read_var_priorities(*model, pszFname); });
}

int QZwriteVarPriorities(QZmodel model, const char* pszFname, int nMode) {
  if (model == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  QZ_GUARD({ return io::write_var_priorities(*model, pszFname, nMode); });
}

int QZreadBlockStructure(QZmodel model, const char* pszFname) {
  if (int rc = check_name(model, pszFname)) return rc;
  QZ_GUARD({ return io::read_block_structure(*model, pszFname); });
}

int QZwriteBlockStructure(QZmodel model, const char* pszFname) {
  if (int rc = check_name(model, pszFname)) return rc;
  QZ_GUARD({ return io::write_block_structure(*model, pszFname); });
}

int QZloadBlockStructure(QZmodel model, int nBlock, const int* panRblock, const int* panCblock,
                         int nType) {
  if (model == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  QZ_GUARD({ return io::load_block_structure(*model, nBlock, panRblock, panCblock, nType); });
}

int QZgetBlockStructure(QZmodel model, int* pnBlock, int* panRblock, int* panCblock,
                        int* pnType) {
  if (int rc = api::check_loaded(model)) return rc;
  const BlockStructure& b = model->blocks;
  if (b.nBlocks == 0) return QZERR_INFO_NOT_AVAILABLE;
  if (pnBlock) *pnBlock = b.nBlocks;
  if (pnType) *pnType = b.type;
  api::copy_out(b.rowBlock, panRblock);
  api::copy_out(b.colBlock, panCblock);
  return 0;
}

int QZwriteSolution(QZmodel model, const char* pszFname) {
  if (int rc = check_name(model, pszFname)) return rc;
  QZ_GUARD({ return io::write_solution(*model, pszFname); });
}

int QZwriteSolutionOfType(QZmodel model, const char* pszFname, int nFormat) {
  if (int rc = check_name(model, pszFname)) return rc;
  QZ_GUARD({ return io::write_solution_of_type(*model, pszFname, nFormat); });
}

}  // extern "C"
