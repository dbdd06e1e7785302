#include "cli/examples.h"

#include <array>
#include <string_view>
#include <utility>

namespace gorbex::cli {
namespace {

using Example = std::pair<std::string_view, std::string_view>;  ///< of a command; after "gorbex "

constexpr std::array kExamples = {
    Example{"build", "build Storefront.bpf --all --junit report.xml"},
    Example{"changes", "changes Storefront.bpf --ini vss.ini"},
    Example{"check", "check Storefront.bpf --ignore no-source-control"},
    Example{"completion", "completion bash"},
    Example{"get", "get Storefront.bpf --ini vss.ini"},
    Example{"graph", "graph Storefront.bpf"},
    Example{"init", "init . -o Product.bpf --build-dir Bin"},
    Example{"label", "label Storefront.bpf v1.0 -m \"First release\" --spec \"$/Core\""},
    Example{"log", "log"},
    Example{"missing", "missing Storefront.bpf"},
    Example{"pipeline", "pipeline Storefront.bpf --gitlab -o pipeline.yml"},
    Example{"plan", "plan Storefront.bpf"},
    Example{"queue", "queue Storefront.bpf mark Till/StoreTill.vbp --with-uses --save"},
    Example{"references", "references Storefront.bpf Till/StoreTill.vbp"},
    Example{"register", "register Bin/StoreMoney.dll"},
    Example{"serve", "serve Storefront.bpf --once"},
    Example{"settings", "settings Jobs 4"},
    Example{"show", "show Storefront.bpf"},
    Example{"unregister", "unregister Bin/StoreMoney.dll"},
    Example{"value", "value get Core/StoreCore.vbp MajorVer"},
    Example{"value get", "value get Core/StoreCore.vbp MajorVer"},
    Example{"value set", "value set Core/StoreCore.vbp MajorVer 2"},
};

}  // namespace

void AddExamples(CLI::App& app, const std::string& path) {
  for (CLI::App* command : app.get_subcommands([](CLI::App*) { return true; })) {
    const std::string name = path + command->get_name();
    for (const auto& [of, example] : kExamples) {
      if (of == name) command->footer("Example: gorbex " + std::string(example));
    }
    AddExamples(*command, name + " ");
  }
}

}  // namespace gorbex::cli
