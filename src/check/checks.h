#pragma once

#include "check/checked_group.h"
#include "check/finding.h"

namespace gorbex {

// Each is in a file named after its id and in a row of the table in check_table.cpp.
void LookForBuildFolder(CheckedGroup& group, Findings& found);
void LookForCircle(CheckedGroup& group, Findings& found);
void LookForCompatibleBinaryMissing(CheckedGroup& group, Findings& found);
void LookForCompilerMissing(CheckedGroup& group, Findings& found);
void LookForLetterCase(CheckedGroup& group, Findings& found);
void LookForLineEnds(CheckedGroup& group, Findings& found);
void LookForNameInName(CheckedGroup& group, Findings& found);
void LookForNameNotRepresentable(CheckedGroup& group, Findings& found);
void LookForNoSourceControl(CheckedGroup& group, Findings& found);
void LookForNotCompatible(CheckedGroup& group, Findings& found);
void LookForNotInBuildProject(CheckedGroup& group, Findings& found);
void LookForOnly64Bit(CheckedGroup& group, Findings& found);
void LookForOutputMissing(CheckedGroup& group, Findings& found);
void LookForProjectReadOnly(CheckedGroup& group, Findings& found);
void LookForProjectUnreadable(CheckedGroup& group, Findings& found);
void LookForQueueOrder(CheckedGroup& group, Findings& found);
void LookForReferenceFileMissing(CheckedGroup& group, Findings& found);
void LookForReferenceUnregistered(CheckedGroup& group, Findings& found);
void LookForReferencesWouldEmpty(CheckedGroup& group, Findings& found);
void LookForRegisteredElsewhere(CheckedGroup& group, Findings& found);
void LookForSameOutput(CheckedGroup& group, Findings& found);
void LookForSharedMember(CheckedGroup& group, Findings& found);
void LookForSourceMissing(CheckedGroup& group, Findings& found);
void LookForUsedNotQueued(CheckedGroup& group, Findings& found);
void LookForVersionOverflow(CheckedGroup& group, Findings& found);

}  // namespace gorbex
