// Entries of the LP and ZENTO text formats and of the MARLO writer.
#include "api/guard.h"
#include "io/text_formats.h"

using namespace zento;

extern "C" {

int QZreadLPFile(QZmodel model, const char* pszFname) {
  if (model == nullptr || pszFname == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  QZ_GUARD({ return io::read_lp_file(*model, pszFname); });
}

int QZreadLPStream(QZmodel model, const char* pszStream, int nStreamLen) {
  if (model == nullptr || (pszStream == nullptr && nStreamLen > 0))
    return QZERR_ILLEGAL_NULL_POINTER;
  QZ_GUARD({ return io::read_lp_stream(*model, pszStream, nStreamLen, nullptr); });
}

int QZreadZENTOFile(QZmodel model, const char* pszFname) {
  if (model == nullptr || pszFname == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  QZ_GUARD({ return io::read_ltx_file(*model, pszFname); });
}

int QZreadZENTOStream(QZmodel model, const char* pszStream, int nStreamLen) {
  if (model == nullptr || (pszStream == nullptr && nStreamLen > 0))
    return QZERR_ILLEGAL_NULL_POINTER;
  QZ_GUARD({ return io::read_ltx_stream(*model, pszStream, nStreamLen, nullptr); });
}

int QZreadZENTOFileX(QZmodel model, const char* pszFname) {
  if (model == nullptr || pszFname == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  QZ_GUARD({ return io::read_ltx_file_x(*model, pszFname); });
}

int QZwriteZENTOFile(QZmodel model, const char* pszFname) {
  if (model == nullptr || pszFname == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  QZ_GUARD({ return io::write_ltx_file(*model, pszFname); });
}

int QZwriteDualZENTOFile(QZmodel model, const char* pszFname, int nObjSense) {
  if (model == nullptr || pszFname == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  QZ_GUARD({ return io::write_dual_ltx_file(*model, pszFname, nObjSense); });
}

int QZwriteMARLOFile(QZmodel model, const char* pszFname) {
  if (model == nullptr || pszFname == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  QZ_GUARD({ return io::write_marlo_file(*model, pszFname); });
}

}  // extern "C"
