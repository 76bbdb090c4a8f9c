// Parameters from the command line: limits, print level, parameter files, NAME=VALUE.
#pragma once

#include "options.h"
#include "zento.h"

namespace runzento {

// Applies the options that are parameters to the model; returns an exit code.
int apply_parameters(QZenv env, QZmodel m, const Options& o);
// Prints every parameter with its value and range; returns an exit code.
int list_parameters(QZenv env);

}  // namespace runzento
