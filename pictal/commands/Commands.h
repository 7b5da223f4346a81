#pragma once

#include "pictal/Program.h"

/// Every command of the program, one function a file.
namespace pictal::program {

void addAnnotate(Program& program);
void addExport(Program& program);
void addDraft(Program& program);
void addOffset(Program& program);
void addStitch(Program& program);
void addPick(Program& program);
void addInfo(Program& program);
void addOCR(Program& program);
void addOCRTensor(Program& program);
void addOCRBoxes(Program& program);
void addOCRLines(Program& program);
void addOCRDecode(Program& program);
void addShortcuts(Program& program);
void addName(Program& program);
void addPreview(Program& program);
void addRedact(Program& program);
void addDemoMode(Program& program);

/// In the order of `pictal --help`.
inline constexpr auto allCommands = {
    addAnnotate,  addExport, addDraft,     addOffset,   addStitch,   addPick,
    addInfo,      addOCR,    addOCRTensor, addOCRBoxes, addOCRLines, addOCRDecode,
    addShortcuts, addName,   addPreview,   addRedact,   addDemoMode};

}  // namespace pictal::program
