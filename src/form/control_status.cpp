#include "form/control_status.h"

#include <initializer_list>

#include "form/text_numbers.h"

namespace pavoline {

void ControlStatus(Form1& form, const Texts& texts, bool enabled) {
  form.busy = !enabled;
  form.command1[kStart].setText(texts.strings[enabled ? kTextStart : kTextBusy]);
  const bool wide = form.width() == kWideWidth;
  form.status.setText(texts.strings[wide ? kTextStatusWide : kTextStatusNormal]);

  for (Control* control : std::initializer_list<Control*>{
           &form.command1[kBrowseImage], &form.command1[kChooseBoot],
           &form.command1[kChooseInstall], &form.command1[kStart], &form.combo[kEditions],
           &form.combo1, &form.text[kBootPartition], &form.text[kInstallPartition], &form.search}) {
    control->setEnabled(enabled);
  }
  for (CheckBox& box : form.check) box.setEnabled(enabled);

  struct Row {
    CheckIndex box;
    Control& field;
    CommandIndex browse;
  };
  for (const Row& row : {Row{kUseAnswerFile, form.text[kAnswerFile], kBrowseAnswerFile},
                         Row{kAddDrivers, form.text[kDriverFolder], kBrowseDrivers},
                         Row{kRunPlugin, form.combo2, kBrowsePlugin}}) {
    if (!form.check[row.box].ticked()) continue;
    row.field.setEnabled(enabled);
    form.command1[row.browse].setEnabled(enabled);
  }
}

}  // namespace pavoline
