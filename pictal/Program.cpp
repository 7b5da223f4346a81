#include "pictal/Program.h"

namespace pictal::program {

Program::Program()
    : app("Annotate screenshots, dress them and export them.\n"
          "Images are PNG files; - means standard input or output.",
          "pictal") {
    app.set_version_flag("--version", "pictal " PICTAL_VERSION);
    app.require_subcommand(1);
    app.footer("pictal COMMAND --help shows a command's options and examples.");
}

}  // namespace pictal::program
