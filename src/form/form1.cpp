#include "form/form1.h"

namespace pavoline {

Form1::Form1() : Form("Form1") {
  // The order is the tab order; labels stand before the field their access key leads to.
  for (Control* control : std::initializer_list<Control*>{&label[0],
                                                          &combo1,
                                                          &command1[kBrowseImage],
                                                          &search,
                                                          &menu,
                                                          &label[1],
                                                          &combo[kEditions],
                                                          &label[2],
                                                          &text[kBootPartition],
                                                          &command1[kChooseBoot],
                                                          &facts[kBootPartition],
                                                          &label[3],
                                                          &text[kInstallPartition],
                                                          &command1[kChooseInstall],
                                                          &facts[kInstallPartition],
                                                          &check[kDoNotFormat],
                                                          &check[kRepairBoot],
                                                          &check[kRestart],
                                                          &frame[kOptionsFrame],
                                                          &check[kUseAnswerFile],
                                                          &text[kAnswerFile],
                                                          &command1[kBrowseAnswerFile],
                                                          &check[kAddDrivers],
                                                          &text[kDriverFolder],
                                                          &command1[kBrowseDrivers],
                                                          &check[kRunPlugin],
                                                          &combo2,
                                                          &command1[kBrowsePlugin],
                                                          &frame[kDetailsFrame],
                                                          &details,
                                                          &status,
                                                          &progressBar1,
                                                          &overall,
                                                          &stop,
                                                          &command1[kStart]}) {
    add(*control);
  }
  for (Timer* timer : {&timer1, &timer2, &timer3, &timer4, &overallTimer}) add(*timer);
  timer1.setInterval(kApplyMonitorInterval);
  timer2.setInterval(kStartupInterval);
  timer3.setInterval(kDriverMonitorInterval);
  timer4.setInterval(kAutoStartInterval);
  overallTimer.setInterval(kOverallInterval);
  stop.setVisible(false);
  for (int index : {kBrowseImage, kBrowseAnswerFile, kBrowseDrivers, kBrowsePlugin}) {
    command1[index].setText("...");
  }
  // A row's field and button wait for the row's box to be ticked.
  for (Control* control : std::initializer_list<Control*>{
           &text[kAnswerFile], &command1[kBrowseAnswerFile], &text[kDriverFolder],
           &command1[kBrowseDrivers], &combo2, &command1[kBrowsePlugin]}) {
    control->setEnabled(false);
  }
  // No default button: Enter in a field must not begin what deletes a partition.
  setSize(kWideWidth, 5400);
}

}  // namespace pavoline
