// fw_config: prints, saves, lists and renames the objects of a
// configuration.  Diagnostics go to stderr; the outcome is the exit status.
#include <cstdlib>

#include "driver/admin_command.h"
#include "driver/program.h"

int main(int argc, char** argv) {
  program_start("fw_config");
  AdminCommand command(argc, argv);
  exit(command.Run());
}
