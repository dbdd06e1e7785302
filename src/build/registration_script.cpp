#include "build/registration_script.h"

#include "core/text.h"

namespace gorbex {
namespace {

void AddLine(std::string& script, std::string_view line) {
  script.append(line).append(kLineBreak);
}

}  // namespace

void RegistrationScript::Begin() {
  std::string& script = window_.registrationScript;
  script.clear();
  AddLine(script, "' VBScript Generated to automatically register built components");
  AddLine(script, "Dim KexrunTk");
  AddLine(script, "Set KexrunTk = CreateObject(\"Kexool.Kexool1.1\")");
}

void RegistrationScript::AddComponent(const std::string& folder, const std::string& exeName) {
  AddLine(window_.registrationScript,
          "Call KexrunTk.Execute(\"RegSvr32 " + folder + exeName + "\"), True, False)");
}

void RegistrationScript::End() {
  AddLine(window_.registrationScript, "Set KexrunTK = nothing");
  AddLine(window_.registrationScript, "' End of Component registration");
}

void RegistrationScript::Save(const std::string& path) {
  files_.Write(path, window_.registrationScript + std::string(kLineBreak));
}

void RegistrationScript::mnuFileGenScript_Click() {
  Procedure(report_, ": frmBuilder.mnuFileGenScript_Click").Run([&](Procedure& on) {
    const auto path = on([&] {
      return dialogs_.SaveFile({"Save VBScript File", "VBScript Files (*.svb)|*.svb", "*.svb"});
    });
    if (path) on([&] { Save(*path); });
    on([&] { window_.SetStatus(path ? "Script Saved" : "Cancelled"); });
  });
}

}  // namespace gorbex
