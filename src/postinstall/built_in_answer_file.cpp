#include "platform/text.h"
#include "postinstall/answer_file.h"

namespace pavoline {
namespace {

// Only ever handled as text. In the last component the wcm prefix stands for another namespace
// than in the others; setup accepts it so.
constexpr char kTemplate[] = R"(<?xml version="1.0" encoding="utf-8"?>
<!--
[Pavoline]
process=1

;Pavoline-Arch
;Pavoline-PC
;Pavoline-Group
-->
<unattend xmlns="urn:schemas-microsoft-com:unattend">
  <settings pass="specialize">
    <component name="Microsoft-Windows-Shell-Setup" processorArchitecture="%Pavoline-Arch%" publicKeyToken="31bf3856ad364e35" language="neutral" versionScope="nonSxS" xmlns:wcm="http://schemas.microsoft.com/WMIConfig/2002/State" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance">
      <ComputerName>%Pavoline-PC%</ComputerName>
    </component>
    <component name="Microsoft-Windows-UnattendedJoin" processorArchitecture="%Pavoline-Arch%" publicKeyToken="31bf3856ad364e35" language="neutral" versionScope="nonSxS" xmlns:wcm="http://schemas.microsoft.com/WMIConfig/2002/State" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance">
      <Identification>
        <JoinWorkgroup>%Pavoline-Group%</JoinWorkgroup>
      </Identification>
    </component>
  </settings>
  <settings pass="oobeSystem">
    <component name="Microsoft-Windows-Shell-Setup" processorArchitecture="%Pavoline-Arch%" publicKeyToken="31bf3856ad364e35" language="neutral" versionScope="nonSxS" xmlns:wcm="http://www.w3.org/2001/XMLSchema-instance">
      <OOBE>
        <SkipMachineOOBE>true</SkipMachineOOBE>
        <SkipUserOOBE>false</SkipUserOOBE>
      </OOBE>
      <AutoLogon>
        <Username>Administrator</Username>
        <Enabled>true</Enabled>
        <LogonCount>1</LogonCount>
      </AutoLogon>
      <LogonCommands>
        <AsynchronousCommand wcm:action="add">
          <Description>Active</Description>
          <Order>1</Order>
        </AsynchronousCommand>
      </LogonCommands>
    </component>
  </settings>
</unattend>
)";

}  // namespace

const std::string& BuiltInAnswerFile() {
  static const std::string text = ReplaceAll(kTemplate, "\n", "\r\n");
  return text;
}

}  // namespace pavoline
