// Fortran-style twins of the parameter entries: every scalar and handle by reference.
#include "zento.h"
#include "zento_fortran.h"

extern "C" {

int qzsetmodelintparameter_(QZmodel* m, int* id, int* v) { return QZsetModelIntParameter(*m, *id, *v); }
int qzsetmodeldouparameter_(QZmodel* m, int* id, double* v) { return QZsetModelDouParameter(*m, *id, *v); }
int qzgetmodelintparameter_(QZmodel* m, int* id, int* v) { return QZgetModelIntParameter(*m, *id, v); }
int qzgetmodeldouparameter_(QZmodel* m, int* id, double* v) { return QZgetModelDouParameter(*m, *id, v); }
int qzsetenvintparameter_(QZenv* e, int* id, int* v) { return QZsetEnvIntParameter(*e, *id, *v); }
int qzsetenvdouparameter_(QZenv* e, int* id, double* v) { return QZsetEnvDouParameter(*e, *id, *v); }
int qzgetenvintparameter_(QZenv* e, int* id, int* v) { return QZgetEnvIntParameter(*e, *id, v); }
int qzgetenvdouparameter_(QZenv* e, int* id, double* v) { return QZgetEnvDouParameter(*e, *id, v); }
int qzsetmodelparameter_(QZmodel* m, int* id, void* v) { return QZsetModelParameter(*m, *id, v); }
int qzgetmodelparameter_(QZmodel* m, int* id, void* v) { return QZgetModelParameter(*m, *id, v); }
int qzsetenvparameter_(QZenv* e, int* id, void* v) { return QZsetEnvParameter(*e, *id, v); }
int qzgetenvparameter_(QZenv* e, int* id, void* v) { return QZgetEnvParameter(*e, *id, v); }
int qzreadmodelparameter_(QZmodel* m, const char* f) { return QZreadModelParameter(*m, f); }
int qzwritemodelparameter_(QZmodel* m, const char* f) { return QZwriteModelParameter(*m, f); }
int qzreadenvparameter_(QZenv* e, const char* f) { return QZreadEnvParameter(*e, f); }
int qzwriteenvparameter_(QZenv* e, const char* f) { return QZwriteEnvParameter(*e, f); }
int qzgetparamcount_(QZenv* e, int* n) { return QZgetParamCount(*e, n); }
int qzgetparammacroname_(QZenv* e, int* id, char* s) { return QZgetParamMacroName(*e, *id, s); }
int qzgetparammacroid_(QZenv* e, const char* s, int* t, int* id) { return QZgetParamMacroID(*e, s, t, id); }

}  // extern "C"
