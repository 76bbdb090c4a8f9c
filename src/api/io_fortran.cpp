// Fortran-style twins of the file entries.
#include "zento.h"

extern "C" {

int qzreadmpsfile_(QZmodel* model, const char* pszFname, int* nFormat) {
  return QZreadMPSFile(*model, pszFname, *nFormat);
}

int qzreadmpsfilefr_(QZmodel* model, const char* pszFname, int* nFormat, int* nObjIndex,
                     int* nKeepFreeRows) {
  return QZreadMPSFileFR(*model, pszFname, *nFormat, *nObjIndex, *nKeepFreeRows);
}

int qzwritempsfile_(QZmodel* model, const char* pszFname, int* nFormat) {
  return QZwriteMPSFile(*model, pszFname, *nFormat);
}

int qzwritedualmpsfile_(QZmodel* model, const char* pszFname, int* nFormat, int* nObjSense) {
  return QZwriteDualMPSFile(*model, pszFname, *nFormat, *nObjSense);
}

int qzwritebasis_(QZmodel* model, const char* pszFname, int* nFormat) {
  return QZwriteBasis(*model, pszFname, *nFormat);
}

int qzreadbasis_(QZmodel* model, const char* pszFname, int* nFormat) {
  return QZreadBasis(*model, pszFname, *nFormat);
}

int qzreadvarstartpoint_(QZmodel* model, const char* pszFname) {
  return QZreadVarStartPoint(*model, pszFname);
}

int qzreadvarpriorities_(QZmodel* model, const char* pszFname) {
  return QZreadVarPriorities(*model, pszFname);
}

int qzwritevarpriorities_(QZmodel* model, const char* pszFname, int* nMode) {
  return QZwriteVarPriorities(*model, pszFname, *nMode);
}

int qzreadblockstructure_(QZmodel* model, const char* pszFname) {
  return QZreadBlockStructure(*model, pszFname);
}

int qzwriteblockstructure_(QZmodel* model, const char* pszFname) {
  return QZwriteBlockStructure(*model, pszFname);
}

int qzloadblockstructure_(QZmodel* model, int* nBlock, const int* panRblock, const int* panCblock,
                          int* nType) {
  return QZloadBlockStructure(*model, *nBlock, panRblock, panCblock, *nType);
}

int qzgetblockstructure_(QZmodel* model, int* pnBlock, int* panRblock, int* panCblock,
                         int* pnType) {
  return QZgetBlockStructure(*model, pnBlock, panRblock, panCblock, pnType);
}

int qzwritesolution_(QZmodel* model, const char* pszFname) {
  return QZwriteSolution(*model, pszFname);
}

int qzwritesolutionoftype_(QZmodel* model, const char* pszFname, int* nFormat) {
  return QZwriteSolutionOfType(*model, pszFname, *nFormat);
}

}  // extern "C"
