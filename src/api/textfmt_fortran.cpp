// Fortran-style twins of the text-format entries: every scalar and handle by reference.
#include "zento.h"

extern "C" {

int qzreadlpfile_(QZmodel* model, const char* pszFname) { return QZreadLPFile(*model, pszFname); }
int qzreadlpstream_(QZmodel* model, const char* pszStream, int* nStreamLen) {
  return QZreadLPStream(*model, pszStream, *nStreamLen);
}
int qzreadzentofile_(QZmodel* model, const char* pszFname) {
  return QZreadZENTOFile(*model, pszFname);
}
int qzreadzentostream_(QZmodel* model, const char* pszStream, int* nStreamLen) {
  return QZreadZENTOStream(*model, pszStream, *nStreamLen);
}
int qzwritezentofile_(QZmodel* model, const char* pszFname) {
  return QZwriteZENTOFile(*model, pszFname);
}
int qzwritedualzentofile_(QZmodel* model, const char* pszFname, int* nObjSense) {
  return QZwriteDualZENTOFile(*model, pszFname, *nObjSense);
}
int qzwritemarlofile_(QZmodel* model, const char* pszFname) {
  return QZwriteMARLOFile(*model, pszFname);
}

}  // extern "C"
