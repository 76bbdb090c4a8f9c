/* Model files, basis files, start points, priorities, block structure and solution reports. */
#ifndef ZENTO_IO_H
#define ZENTO_IO_H

#ifdef __cplusplus
extern "C" {
#endif

/* Layouts of QZreadMPSFile. Fixed: fields at fixed columns, names may hold blanks. Free:
   fields split at blanks. The _IBIN forms read 'INTORG' columns without bounds as binary and
   plain set markers as type 1 sets. QZ_MPS_AUTO examines the file and picks free or fixed. */
#define QZ_MPS_AUTO -1
#define QZ_MPS_FREE 0
#define QZ_MPS_FIXED 1
#define QZ_MPS_FREE_IBIN 2
#define QZ_MPS_FIXED_IBIN 3

/* Values of QZ_IPARAM_MPS_OBJ_WRITESTYLE. */
#define QZ_MPS_USE_MAX_NOTE 0
#define QZ_MPS_USE_MAX_CARD 1
#define QZ_MPS_USE_MAX_FLIP 2

#ifndef QZ_IPARAM_MPS_OBJ_WRITESTYLE
#define QZ_IPARAM_MPS_OBJ_WRITESTYLE 1036
#endif
#ifndef QZ_IPARAM_SOL_REPORT_STYLE
#define QZ_IPARAM_SOL_REPORT_STYLE 1038
#endif

/* Layouts of QZwriteBasis (QZreadBasis reads the binary one). */
#define QZ_BASIS_BINARY 1
#define QZ_BASIS_MPS 2
#define QZ_BASIS_TEXT 3
#define QZ_BASIS_MTX 4

/* Styles of QZwriteSolutionOfType. */
#define QZ_SOLUTION_REPORT 0
#define QZ_SOLUTION_REPORT_MIP 1
#define QZ_SOLUTION_LIST 3
#define QZ_SOLUTION_LIST_MIP 4

QZ_API int QZreadMPSFile(QZmodel model, const char* pszFname, int nFormat);
QZ_API int QZreadMPSFileFR(QZmodel model, const char* pszFname, int nFormat, int nObjIndex,
                           int nKeepFreeRows);
QZ_API int QZwriteMPSFile(QZmodel model, const char* pszFname, int nFormat);
QZ_API int QZwriteDualMPSFile(QZmodel model, const char* pszFname, int nFormat, int nObjSense);
/* After a failed read, QZgetFileError (zento_info.h) gives the line number (from 1) and the
   text of the line the read stopped at. */

QZ_API int QZwriteBasis(QZmodel model, const char* pszFname, int nFormat);
QZ_API int QZreadBasis(QZmodel model, const char* pszFname, int nFormat);
QZ_API int QZreadVarStartPoint(QZmodel model, const char* pszFname);
QZ_API int QZreadVarPriorities(QZmodel model, const char* pszFname);
QZ_API int QZwriteVarPriorities(QZmodel model, const char* pszFname, int nMode);
QZ_API int QZreadBlockStructure(QZmodel model, const char* pszFname);
QZ_API int QZwriteBlockStructure(QZmodel model, const char* pszFname);
QZ_API int QZwriteSolution(QZmodel model, const char* pszFname);
QZ_API int QZwriteSolutionOfType(QZmodel model, const char* pszFname, int nFormat);

/* Block structure: the block of each row and column (from 0) and the block count. nType 1
   marks a time structure given by the first row and column of each stage. */
QZ_API int QZloadBlockStructure(QZmodel model, int nBlock, const int* panRblock,
                                const int* panCblock, int nType);
QZ_API int QZgetBlockStructure(QZmodel model, int* pnBlock, int* panRblock, int* panCblock,
                               int* pnType);

/* LP and ZENTO text formats. The stream entries read `nStreamLen` bytes of text. Bit 0x400 of
   QZ_IPARAM_COPY_MODE makes QZreadZENTOFile use the grammar reader QZreadZENTOFileX. After a
   failed read QZgetFileError gives the line and the text "Error at line %d.". */
QZ_API int QZreadLPFile(QZmodel model, const char* pszFname);
QZ_API int QZreadLPStream(QZmodel model, const char* pszStream, int nStreamLen);
QZ_API int QZreadZENTOFile(QZmodel model, const char* pszFname);
QZ_API int QZreadZENTOStream(QZmodel model, const char* pszStream, int nStreamLen);
QZ_API int QZreadZENTOFileX(QZmodel model, const char* pszFname);
QZ_API int QZwriteZENTOFile(QZmodel model, const char* pszFname);
/* The dual model in ZENTO format; nObjSense 1 negates the dual's costs, -1 keeps them. */
QZ_API int QZwriteDualZENTOFile(QZmodel model, const char* pszFname, int nObjSense);
QZ_API int QZwriteMARLOFile(QZmodel model, const char* pszFname);

/* Fortran-style twins: every scalar and handle by reference. */
QZ_API int qzreadmpsfile_(QZmodel* model, const char* pszFname, int* nFormat);
QZ_API int qzreadmpsfilefr_(QZmodel* model, const char* pszFname, int* nFormat, int* nObjIndex, int* nKeepFreeRows);
QZ_API int qzwritempsfile_(QZmodel* model, const char* pszFname, int* nFormat);
QZ_API int qzwritedualmpsfile_(QZmodel* model, const char* pszFname, int* nFormat, int* nObjSense);
QZ_API int qzwritebasis_(QZmodel* model, const char* pszFname, int* nFormat);
QZ_API int qzreadbasis_(QZmodel* model, const char* pszFname, int* nFormat);
QZ_API int qzreadvarstartpoint_(QZmodel* model, const char* pszFname);
QZ_API int qzreadvarpriorities_(QZmodel* model, const char* pszFname);
QZ_API int qzwritevarpriorities_(QZmodel* model, const char* pszFname, int* nMode);
QZ_API int qzreadblockstructure_(QZmodel* model, const char* pszFname);
QZ_API int qzwriteblockstructure_(QZmodel* model, const char* pszFname);
QZ_API int qzloadblockstructure_(QZmodel* model, int* nBlock, const int* panRblock, const int* panCblock, int* nType);
QZ_API int qzgetblockstructure_(QZmodel* model, int* pnBlock, int* panRblock, int* panCblock, int* pnType);
QZ_API int qzwritesolution_(QZmodel* model, const char* pszFname);
QZ_API int qzreadlpfile_(QZmodel* model, const char* pszFname);
QZ_API int qzreadlpstream_(QZmodel* model, const char* pszStream, int* nStreamLen);
QZ_API int qzreadzentofile_(QZmodel* model, const char* pszFname);
QZ_API int qzreadzentostream_(QZmodel* model, const char* pszStream, int* nStreamLen);
QZ_API int qzwritezentofile_(QZmodel* model, const char* pszFname);
QZ_API int qzwritedualzentofile_(QZmodel* model, const char* pszFname, int* nObjSense);
QZ_API int qzwritemarlofile_(QZmodel* model, const char* pszFname);
QZ_API int qzwritesolutionoftype_(QZmodel* model, const char* pszFname, int* nFormat);

#ifdef __cplusplus
}
#endif

#endif
