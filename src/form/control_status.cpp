#include "form/control_status.h"

#include <initializer_list>

#include "form/text_numbers.h"

namespace pavoline {

void ControlStatus(Form1& form, const Texts& texts, bool enabled) {
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
  for (const OptionRow& row : form.optionRows) {
    if (row.box.ticked()) row.setOpen(enabled);
  }
}

std::vector<Control*> InputsOf(Form1& form) {
  std::vector<Control*> inputs;
  for (Control* control : form.controls()) {
    switch (control->kind()) {
      case Control::Kind::kButton:
      case Control::Kind::kCheckBox:
      case Control::Kind::kTextBox:
      case Control::Kind::kComboBox:
        inputs.push_back(control);
        break;
      default:
        break;
    }
  }
  return inputs;
}

}  // namespace pavoline
