#pragma once

#include "pictal/Program.h"

/// Every command of the program, one function a file. `main` adds them in this order, which is the
/// order of `pictal --help`.
namespace pictal::program {

void addAnnotate(Program& program);
void addExport(Program& program);
void addDraft(Program& program);
void addOffset(Program& program);
void addStitch(Program& program);
void addInfo(Program& program);
void addShortcuts(Program& program);
void addName(Program& program);
void addPreview(Program& program);
void addRedact(Program& program);
void addDemoMode(Program& program);

}  // namespace pictal::program
