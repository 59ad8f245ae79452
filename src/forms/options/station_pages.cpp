// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/options/station_pages.h"

#include <QFileDialog>

#include "forms/options/identity_page.h"

namespace tarvolt {

OptionPage* MakeFilesPage(OptionFields& fields, QWidget* parent) {
  auto* page = new OptionPage(fields, parent);
  page->Group(QStringLiteral("Folders"));
  page->Browse("DataDirectory", QStringLiteral("Data Directory"), "cmdBrowseDataDirectory",
               [page](const QString& text) { return ChooseFolder(page, QStringLiteral("Data Directory"), text); });
  page->Check("OrganizeByMonth", QStringLiteral("A folder for each month"));
  page->Check("OrganizeByDay", QStringLiteral("A folder for each day"));
  page->Group(QStringLiteral("Saving"));
  page->Check("AutoSaveStandAlone", QStringLiteral("Save charts of this station by itself"));
  page->Check("AutoSaveClient", QStringLiteral("Save charts of a server by itself"));
  page->Check("PromptBeforeSaving", QStringLiteral("Ask for the file name before saving"));
  page->List("SaveIF", QStringLiteral("Save"),
             {{QStringLiteral("always"), "0"},
              {QStringLiteral("only with a value from this up"), "1"},
              {QStringLiteral("only with a value from this down"), "-1"}});
  page->Line("SaveIFVal", QStringLiteral("Value"));
  page->Group(QStringLiteral("Form of the files"));
  page->Check("SaveAsIntegers", QStringLiteral("Save as integers"));
  page->Check("NoTimeStamps", QStringLiteral("No time stamps"))
      .setToolTip(QStringLiteral("Such files cannot be read by versions before 1.2.8."));
  page->Check("ShowLoadOptions", QStringLiteral("Show the loading options for all loads"));
  page->Check("AutoSaveSessionLog", QStringLiteral("Save the session log"));
  page->Close();
  return page;
}

OptionPage* MakeBackupPage(OptionFields& fields, QWidget* parent) {
  auto* page = new OptionPage(fields, parent);
  page->Group(QStringLiteral("Backup while a chart runs"));
  page->Check("DiskBackUp", QStringLiteral("Back up charts of this station on the disk"));
  page->Check("ClientDiskBackUp", QStringLiteral("Back up charts of a server on the disk"));
  page->Group(QStringLiteral("Small charts"));
  page->Check("MiniServer", QStringLiteral("Keep only the last chart width of this station's chart in memory"));
  page->Check("MiniClient", QStringLiteral("Keep only the last chart width of a server's chart in memory"));
  page->Words(
      QStringLiteral("The rest of a small chart is in its backup alone: without the backup it is not saved. A "
                     "change counts from the next log."));
  page->Close();
  return page;
}

OptionPage* MakeNetworkPage(OptionFields& fields, QWidget* parent) {
  auto* page = new OptionPage(fields, parent);
  page->Group(QStringLiteral("Server"));
  page->Line("LocalServerPort", QStringLiteral("Server Port"));
  page->Line("MaxClients", QStringLiteral("Most clients"));
  page->Check("SendOffsetsToClients", QStringLiteral("Send the values with their offsets"));
  page->Group(QStringLiteral("Client"));
  page->Line("LocalClientPort", QStringLiteral("Client Port"));
  page->Check("AutoSelectClientPort", QStringLiteral("Select the client port by itself"));
  page->Line("ConnectionTimeOut", QStringLiteral("Wait for a server"), QStringLiteral("seconds"));
  page->Line("ClientAvg", QStringLiteral("Samples averaged into one"));
  page->Line("ClientUpdateRate", QStringLiteral("Repaint every"), QStringLiteral("samples"));
  page->Check("ChatEnabled", QStringLiteral("Chat"));
  page->Close();
  return page;
}

OptionPage* MakeUdsPage(OptionFields& fields, QWidget* parent) {
  auto* page = new OptionPage(fields, parent);
  page->Group(QStringLiteral("User Data Source"));
  page->Line("UDSip", QStringLiteral("Address"));
  page->Line("UDSport", QStringLiteral("Port"));
  page->List("UDSpush", QStringLiteral("Data"),
             {{QStringLiteral("Poll for Data"), "False"}, {QStringLiteral("UDS Pushes Data"), "True"}});
  page->Browse("UDSexe", QStringLiteral("Program"), "cmdBrowseUDSexe", [page](const QString& text) {
    return QFileDialog::getOpenFileName(page, QStringLiteral("User Data Source"), text);
  });
  page->Check("StartUDS", QStringLiteral("Try to start UDS automatically."));
  page->Group(QStringLiteral("This side of the connection"));
  page->Line("TVudsIP", QStringLiteral("Local address"))
      .setPlaceholderText(QStringLiteral("Leave blank to use the Internet Address of Tarvolt"));
  page->Line("TVudsPort", QStringLiteral("Local port"))
      .setPlaceholderText(QStringLiteral("Leave blank for random Port."));
  page->Close();
  return page;
}

OptionPage* MakeMessagesPage(OptionFields& fields, QWidget* parent) {
  auto* page = new OptionPage(fields, parent);
  page->Group(QStringLiteral("Messages"));
  page->Check("ShowMsgBox", QStringLiteral("Show message boxes"))
      .setToolTip(QStringLiteral("Without them nothing waits for a person: for a station that runs alone."));
  page->Check("Warn", QStringLiteral("Show warnings"));
  page->Group(QStringLiteral("Remote administration"));
  page->Check("AllowRemoteAdmin", QStringLiteral("Allow remote administration"));
  page->Check("PromptForAdmin", QStringLiteral("Ask about it when the program ends"));
  page->Close();
  return page;
}

}  // namespace tarvolt
