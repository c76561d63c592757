// SPDX-License-Identifier: MIT
//
// One package for all processors of a family: a program that any of them runs, and a second one for those that know
// more instructions, which is faster there.
#pragma once

namespace helvan {

// Has the program for newer processors take this one's place, with the same arguments, streams and result, where one
// is installed beside it and the processor knows its instructions. Returns where not: then this program goes on. To be
// called before anything is opened or started.
void giveWayToNewerProgram(char** arguments);

} // namespace helvan
