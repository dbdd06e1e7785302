#include "freshness/shared_check.h"

#include <utility>

#include "core/file_tools.h"
#include "core/reference_value.h"
#include "core/text.h"
#include "platform/code_page.h"

namespace gorbex {
namespace {

std::string_view Fault(Fingerprint::State state) {
  return state == Fingerprint::State::Missing ? " is missing" : " cannot be read";
}

}  // namespace

Freshness::SharedFinding Freshness::SharedCheck::Run() {
  using Input = BuildInput::Kind;
  if (input_.kind == Input::Reference) CheckReference();
  if (input_.kind == Input::Stray) CheckStray();
  if (input_.kind == Input::Compiler) CheckCompiler();
  return std::move(finding_);
}

void Freshness::SharedCheck::Add(Kind kind, const std::string& subject, const std::string& text) {
  finding_.reason = Reason{kind, subject, text, input_.place};
}

Fingerprint Freshness::SharedCheck::Now(Covered covered) {
  const Fingerprint now = owner_.looks_.Of(input_.place, covered, input_.print);
  if (now.Matches(input_.print) && now.stamp && now.stamp != input_.print.stamp) {
    BuildInput renewed = input_;
    renewed.print = now;
    finding_.renewed = std::make_shared<const BuildInput>(std::move(renewed));
  }
  return now;
}

void Freshness::SharedCheck::CheckReference() {
  const std::string& lead = owner_.Lead(input_.name);
  if (EqualsIgnoringCase(lead, input_.place)) return CheckInterface();
  AddReference(lead.empty() ? " is not registered any more" : " leads to another file now");
}

void Freshness::SharedCheck::CheckStray() {
  const bool isKnownNow = !GetGUID(input_.name).empty() && !owner_.Lead(input_.name).empty();
  if (!isKnownNow) return CheckInterface();
  AddReference(" leads to another file now");
}

void Freshness::SharedCheck::AddReference(std::string_view change) {
  const std::string file = GetFileFromPath(input_.place);
  std::string text(GetGUID(input_.name));
  text.append(change);
  if (!file.empty()) text.append(" (").append(file).append(")");
  Add(Kind::Reference, file, text);
}

void Freshness::SharedCheck::CheckInterface() {
  const Fingerprint now = Now(Covered::Interface);
  if (now.Matches(input_.print)) return;
  const std::string file = GetFileFromPath(input_.place.empty() ? input_.name : input_.place);
  if (now.state == Fingerprint::State::Read) {
    return Add(Kind::Interface, file, "the interface of " + file + " changed");
  }
  Add(Kind::Interface, file, file + ", which it uses," + std::string(Fault(now.state)));
}

void Freshness::SharedCheck::CheckCompiler() {
  const std::string compiler = WithoutQuotes(owner_.uses_.window.compilerPath);
  const bool isSame =
      EqualsIgnoringCase(compiler, input_.place) && Now(Covered::Contents).Matches(input_.print);
  if (!isSame) Add(Kind::Compiler, compiler, "another compiler");
}

}  // namespace gorbex
