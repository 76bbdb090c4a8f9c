// Parameter files: reading settings into a model or the environment, writing them back out,
// and the registry as AsciiDoc documentation.
//
// A parameter file holds one "name = value" setting per line; a line that does not start
// with a parameter name followed by "=" is a comment. The writers comment out every setting
// that equals the reference value, so a file written and read back changes nothing.
#pragma once

#include <cstdio>
#include <vector>

#include "core/params/registry.h"
#include "zento.h"

namespace zento {

[[nodiscard]] int read_model_params(Imodel& m, const char* file);
[[nodiscard]] int read_env_params(QZenv env, const char* file);
[[nodiscard]] int write_model_params(Imodel& m, const char* file);
[[nodiscard]] int write_env_params(QZenv env, const char* file);
[[nodiscard]] int write_params_asciidoc(QZenv env, const char* file);
// Takes a snapshot of the reference model's values (null clears it).
int set_par_model(Imodel& m, Imodel* ref);

// The tuner's simpler forms on a registry copy: any case of the name, values out of range
// stored with a warning.
int QZI_ReadPar(std::vector<ParItem>& items, FILE* fp, QZenv env);
int QZI_ReadParFile(std::vector<ParItem>& items, const char* file, QZenv env);
int QZI_WritePar(const std::vector<ParItem>& items, FILE* fp);
void QZI_PrintParSteps(QZenv env, const std::vector<ParItem>& items);

}  // namespace zento
