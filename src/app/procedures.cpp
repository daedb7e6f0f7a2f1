#include "app/procedures.h"

#include "app/frm_print.h"

namespace memwright {

Procedures::Procedures(Form1& its_form, Platform its_platform, ComPorts& its_ports,
                       Notices& notices)
    : form(its_form),
      platform(its_platform),
      ports(its_ports),
      store(platform.files),
      table(store, form.MSFlexGrid1, form.mnuSaveOnly),
      editor(form.MSFlexGrid1, form.TxtGrid, form.CboGrid, platform.cells,
             [this] { pop_up_edit_menu(); }),
      rows(form.MSFlexGrid1, table, editor, platform.messages,
           {form.mnuCut, form.mnuCopy, form.mnuPaste}),
      image_files(store, table, form.MSFlexGrid1, form, form.caption,
                  {platform.messages, platform.file_dialogs, platform.files}),
      shell(form, platform.window, platform.settings, platform.files, table, image_files),
      status_window(form.Text1, form.mnuShwDbg, platform.settings, [this] { shell.Form_Resize(); }),
      stall_watch(form.Label1),
      control({form.TransferProgress, form.ReceivedLabel, form.TransferButton}, platform.port, form,
              platform.messages),
      link(platform.port, platform.settings, platform.clock, platform.loop,
           {form.Label1, form.Text1}, control),
      clone_read(link, store, table, image_files, form, platform.messages),
      clone_write(link, store, table, form, platform.messages),
      import_progress(form, notices, platform.loop),
      csv_files(table, form.MSFlexGrid1, platform.file_dialogs, platform.files, import_progress),
      printing(platform.printer, platform.clock, platform.messages,
               [this] { return image_files.current_path(); }) {}

void Procedures::pop_up_edit_menu() {
    rows.mnuEdit_Click();
    platform.window.pop_up_menu(form.mnuEdit.name);
}

void Procedures::mnuPrint_Click() {
    frmPrint dialog;
    platform.dialogs.show_modal(dialog);
    // Deliberate: whichever rows, always across the paper.
    constexpr bool kHorizontal = true;
    if (const auto wanted = dialog.wanted()) {
        printing.PrintGrid(form.MSFlexGrid1, "Memwright", kHorizontal, wanted->first, wanted->last);
    }
}

void Procedures::TransferButton_Click() {
    if (import_progress.running()) {
        import_progress.cancel();
    } else {
        control.button_click();
    }
}

}  // namespace memwright
