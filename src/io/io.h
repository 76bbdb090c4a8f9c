// The file entries of the library, behind the QZ* shims of api/io_api.cpp.
#pragma once

#include "core/model.h"

namespace zento::io {

[[nodiscard]] int read_mps_file(Imodel& m, const char* pszFname, int nFormat, int nObjIndex,
                                int nKeepFreeRows);
[[nodiscard]] int write_mps_file(const Imodel& m, const char* pszFname, int nFormat);

[[nodiscard]] int write_basis(Imodel& m, const char* pszFname, int nFormat);
[[nodiscard]] int read_basis(Imodel& m, const char* pszFname, int nFormat);
[[nodiscard]] int read_var_start_point(Imodel& m, const char* pszFname);
[[nodiscard]] int read_var_priorities(Imodel& m, const char* pszFname);
[[nodiscard]] int write_var_priorities(Imodel& m, const char* pszFname, int nMode);
[[nodiscard]] int read_block_structure(Imodel& m, const char* pszFname);
[[nodiscard]] int write_block_structure(Imodel& m, const char* pszFname);
[[nodiscard]] int load_block_structure(Imodel& m, int nBlock, const int* panRblock,
                                       const int* panCblock, int nType);
[[nodiscard]] int write_solution(Imodel& m, const char* pszFname);
[[nodiscard]] int write_solution_of_type(Imodel& m, const char* pszFname, int nFormat);

}  // namespace zento::io
