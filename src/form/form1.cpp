#include "form/form1.h"

namespace pavoline {

void OptionRow::setOpen(bool open) const {
  field.setEnabled(open);
  browse.setEnabled(open);
}

void OptionRow::setVisible(bool visible) const {
  for (Control* control : std::initializer_list<Control*>{&box, &field, &browse}) {
    control->setVisible(visible);
  }
}

Form1::Form1()
    : Form("Form1"),
      optionRows{
          {check[kUseAnswerFile], text[kAnswerFile], command1[kBrowseAnswerFile],
           kCaptionAnswerFile, true},
          {check[kAddDrivers], text[kDriverFolder], command1[kBrowseDrivers], kCaptionDrivers,
           true},
          {check[kRunPlugin], combo2, command1[kBrowsePlugin], kCaptionPlugin, false},
      } {
  // The order is the tab order; labels stand before the field their access key leads to.
  for (Control* control : std::initializer_list<Control*>{
           &label[0], &combo1, &command1[kBrowseImage], &search, &menu, &label[1],
           &combo[kEditions], &label[2], &text[kBootPartition], &command1[kChooseBoot],
           &facts[kBootPartition], &label[3], &text[kInstallPartition], &command1[kChooseInstall],
           &facts[kInstallPartition], &check[kDoNotFormat], &check[kRepairBoot], &check[kRestart],
           &frame[kOptionsFrame]}) {
    add(*control);
  }
  command1[kBrowseImage].setText("...");
  for (const OptionRow& row : optionRows) {
    add(row.box);
    add(row.field);
    add(row.browse);
    row.browse.setText("...");
    row.setOpen(false);
  }
  for (Control* control :
       std::initializer_list<Control*>{&frame[kDetailsFrame], &details, &status, &progressBar1,
                                       &overall, &stop, &command1[kStart]}) {
    add(*control);
  }
  for (Timer* timer : {&timer1, &timer2, &timer3, &timer4, &overallTimer}) add(*timer);
  timer1.setInterval(kApplyMonitorInterval);
  timer2.setInterval(kStartupInterval);
  timer3.setInterval(kDriverMonitorInterval);
  timer4.setInterval(kAutoStartInterval);
  overallTimer.setInterval(kOverallInterval);
  stop.setVisible(false);
  // No default button: Enter in a field must not begin what deletes a partition.
  setSize(kWideWidth, 5400);
}

}  // namespace pavoline
