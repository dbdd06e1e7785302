#include <algorithm>

#include "check/check.h"
#include "check/checks.h"

namespace gorbex {

const std::vector<Check>& AllChecks() {
  constexpr auto kError = Severity::Error;
  constexpr auto kWarning = Severity::Warning;
  static const std::vector<Check> kChecks = {
      {"compiler-missing", kError, "There is no compiler",
       "Install the development environment, or name a compiler with --compiler.",
       LookForCompilerMissing, true},
      {"build-folder", kError, "A folder that is built into cannot be used",
       "Make the folder, or set another build path.", LookForBuildFolder},
      {"project-unreadable", kError, "A project file is missing or cannot be read",
       "Get the file again, or remove it from the build project.", LookForProjectUnreadable},
      {"line-ends", kError, "Lines end in a way that the compiler cannot read",
       "Change them to CR LF: \"gorbex init --crlf\" does it for project files; tell git to check "
       "sources out with \"eol=crlf\".",
       LookForLineEnds},
      {"output-missing", kError, "A project does not say what it builds",
       "Enter a name for the project and its file, and save it.", LookForOutputMissing},
      {"source-missing", kError, "A source or resource file is missing or cannot be read",
       "Get the file again, or remove it from the project.", LookForSourceMissing, true},
      {"reference-unregistered", kError, "A referenced component is not registered",
       "Install or register the component, or build its project first.",
       LookForReferenceUnregistered},
      {"reference-file-missing", kError, "The file of a referenced component is missing",
       "Install the component again, or register the file where it is now.",
       LookForReferenceFileMissing},
      {"compatible-binary-missing", kError, "The binary to be compatible with cannot be used",
       "Get the last released binary, or correct the project's compatible file.",
       LookForCompatibleBinaryMissing},
      {"same-output", kError, "Two projects write the same file",
       "Take all but one of them out of the queue, or give them different output files.",
       LookForSameOutput},
      {"circle", kError, "Projects use one another in a circle",
       "Remove one of the references, for example by moving what is shared into a third "
       "project.",
       LookForCircle, true},
      {"queue-order", kError, "A project is queued before one that it uses",
       "Arrange the queue, or move the used project up.", LookForQueueOrder, true},
      {"references-would-empty", kError, "An update of references would empty identities",
       "Queue and check the projects of these components, or switch Update references off.",
       LookForReferencesWouldEmpty},
      {"project-read-only", kError, "The run would write into a read-only project file",
       "Check the files out, or make them writable.", LookForProjectReadOnly},
      {"version-overflow", kError, "A version number becomes too large",
       "Choose a version whose numbers, written one after the other, do not exceed 2147483647.",
       LookForVersionOverflow},
      {"registered-elsewhere", kWarning, "Another file is registered than the project names",
       "Register the file that the project names, or correct the reference.",
       LookForRegisteredElsewhere},
      {"used-not-queued", kWarning, "A used project is not in the queue",
       "Add it to the queue, unless its present binary is wanted.", LookForUsedNotQueued},
      {"not-compatible", kWarning, "A component that others use gets a new identity",
       "Let the project keep binary compatibility, or switch Update references on.",
       LookForNotCompatible},
      {"name-in-name", kWarning, "A binary's name is a part of the name of another component",
       "Rename one of them: references are recognised by the name.", LookForNameInName},
      {"shared-member", kWarning, "An update of references changes a source of another project",
       "Build the other project in the same run.", LookForSharedMember},
      {"only-64-bit", kWarning, "A component is registered for 64-bit programs only",
       "Register the 32-bit component.", LookForOnly64Bit},
      {"name-not-representable", kWarning, "A file has a name that Windows cannot use",
       "Rename the file.", LookForNameNotRepresentable},
      {"letter-case", kWarning, "Two files have names that differ in letter case only",
       "Remove or rename one of them.", LookForLetterCase},
      {"not-in-build-project", kWarning, "A project beside the others is in no build project",
       "Add it to the build project, or remove its file.", LookForNotInBuildProject},
      {"no-source-control", kWarning, "Latest sources are wanted of a project without any",
       "Bind the project to source control, or switch Get latest off.", LookForNoSourceControl},
  };
  return kChecks;
}

const Check* FindCheck(std::string_view id) {
  const auto& all = AllChecks();
  const auto found = std::ranges::find(all, id, &Check::id);
  return found == all.end() ? nullptr : &*found;
}

}  // namespace gorbex
