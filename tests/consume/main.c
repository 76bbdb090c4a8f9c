/* Smallest consumer of an installed zento: create and delete an environment. */
#include <stdio.h>

#include "zento.h"

int main(void) {
  int rc = -1;
  QZenv env = QZcreateEnv(&rc);
  char version[64];
  if (env == NULL || rc != 0) return 1;
  QZgetVersionInfo(version, NULL);
  printf("zento %s\n", version);
  return QZdeleteEnv(&env);
}
