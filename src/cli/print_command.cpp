// print: the dialog of printing, worked from the command line, and a PDF file for paper.

#include "app/frm_print.h"
#include "app/print_grid.h"
#include "cli/commands.h"
#include "cli/kept_input.h"
#include "cli/workbench.h"
#include "native/modules.h"

namespace memwright::cli {
namespace {

// A row of a range; 0 if the text is none.
int row_from(const std::string& text) {
    if (text.empty() || text.size() > 3) return 0;
    if (text.find_first_not_of("0123456789") != std::string::npos) return 0;
    const int row = std::stoi(text);
    return row <= frmPrint::kLastRow ? row : 0;
}

void choose_rows(frmPrint& dialog, const std::string& range) {
    const auto dash = range.find('-');
    const std::string first = range.substr(0, dash);
    const std::string last = dash == std::string::npos ? "" : range.substr(dash + 1);
    if (row_from(first) == 0 || row_from(last) < row_from(first)) {
        throw WrongUsage("--range is A-B with rows from 1 to 240, not \"" + range + "\".");
    }
    dialog.Option1.selected = false;
    dialog.Option2.selected = true;
    dialog.Text1.text = first;
    dialog.Text2.text = last;
}

}  // namespace

Status print(const Arguments& arguments, Session& session) {
    const auto output = arguments.value("--pdf");
    if (!output) throw WrongUsage("--pdf OUT is missing.");
    keep_input(session.files, {"IMAGE", arguments[0]}, {"--pdf", *output, "the pages"});
    frmPrint dialog;
    if (const auto range = arguments.value("--range")) choose_rows(dialog, *range);
    dialog.Command1.clicked();
    const frmPrint::Range rows = *dialog.wanted();

    Workbench bench(session.console, session.files);
    bench.open(arguments[0]);
    const auto loaded = open_ports_and_pages(ModuleUse::pages);
    const auto printer = loaded->pdf_printer(*output, session.files);
    SaidMessages messages(session.console);
    GridPrinting printing(*printer, loaded->clock(), messages,
                          [&] { return bench.image_files.current_path(); });
    printing.PrintGrid(bench.form.MSFlexGrid1, "Memwright", true, rows.first, rows.last);
    return kDone;
}

}  // namespace memwright::cli
