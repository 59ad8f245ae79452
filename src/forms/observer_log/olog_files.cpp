// SPDX-License-Identifier: GPL-3.0-or-later
#include <QStatusBar>
#include <utility>

#include "config/text_file.h"
#include "files/log_folder.h"
#include "files/recovery_folder.h"
#include "forms/observer_log/form_observer_log.h"
#include "forms/observer_log/keep_setting.h"
#include "forms/observer_log/rich_document.h"
#include "forms/qt_text.h"
#include "logs/log_words.h"
#include "logs/observer_log.h"
#include "text/ansi.h"
#include "text/number.h"

namespace tarvolt {
namespace {

constexpr const char* kTitle = "Observer Log";
constexpr const char* kTextFirst =
    "Text Tarvolt Observer Log (*.txt)|*.txt|RTF Tarvolt Observer Log (*.rtf)|*.rtf|Any (*.*)|*.*";
constexpr const char* kRtfFirst =
    "RTF Tarvolt Observer Log (*.rtf)|*.rtf|Text Tarvolt Observer Log (*.txt)|*.txt|Any (*.*)|*.*";
constexpr const char* kAny = "Any (*.*)|*.*";
constexpr const char* kTextOrAny = "Text (*.txt)|*.txt|Any (*.*)|*.*";
constexpr const char* kMacroFilter = "Observer Log Macros (*.tvo)|*.tvo";

bool IsRtf(const std::filesystem::path& file) {
  return EqualNoCase(file.extension().string(), ".rtf");
}

const char* Filter(std::string_view ending) {
  return ending == ".rtf" ? kRtfFirst : kTextFirst;
}

std::string PlainText(const RichText& text) {
  std::string plain;
  for (const RichPiece& piece : text) plain += piece.text;
  return ReplaceAll(plain, "\n", "\r\n");
}

std::size_t LengthOf(const RichText& text) {
  std::size_t length = 0;
  for (const RichPiece& piece : text) length += piece.text.size();
  return length;
}

RichText RichOfPlain(std::string_view plain) {
  std::string text = ReplaceAll(ReplaceAll(plain, "\r\n", "\n"), "\r", "\n");
  for (char& c : text) {
    if (static_cast<unsigned char>(c) < ' ' && c != '\n' && c != '\t') c = ' ';
  }
  return {{text, {}, std::nullopt}};
}

}  // namespace

std::string FormObserverLog::Ending() const {
  return EqualNoCase(session_.store.GetSetting(Section::Settings, "OLastExt"), "rtf") ? ".rtf" : ".txt";
}

std::filesystem::path FormObserverLog::ProposedName() const {
  if (hasFile_) return file_;
  std::filesystem::path name = NameOLogFile(session_.host.clock, session_.settings);
  return OLogFolder(session_, form_.Window()) / name.replace_extension(Ending());
}

bool FormObserverLog::Save() {
  if (!hasFile_) return SaveAs();
  return HasTextToSave() && SaveTold(file_);
}

bool FormObserverLog::HasTextToSave() const {
  if (!text_->document()->isEmpty()) return true;
  session_.host.dialogs.ShowMessage(kTitle, "There is nothing to save.");
  return false;
}

bool FormObserverLog::SaveAs() {
  if (!HasTextToSave()) return false;
  const std::filesystem::path name = ProposedName();
  std::error_code ignored;
  session_.host.files.MakeFolders(name.parent_path(), ignored);
  const std::string ending = Ending();
  const auto chosen = session_.host.dialogs.AskSaveFile(
      {"Save Observer Log", name.parent_path().string(), name.filename().string(), ending, Filter(ending)});
  return chosen && SaveTold(*chosen);
}

bool FormObserverLog::SaveTold(const std::filesystem::path& file) {
  std::string problem;
  if (WriteTo(file, problem)) return true;
  TellProblem("The observer log could not be saved to " + file.string() + ": " + problem);
  return false;
}

bool FormObserverLog::SaveUnasked() {
  if (!HasUnsaved()) return true;
  std::filesystem::path file = file_;
  std::error_code ignored;
  if (!hasFile_) {
    const std::filesystem::path folder = OLogFolder(session_, form_.Window());
    session_.host.files.MakeFolders(folder, ignored);
    file = FreeName(session_.host.files, folder / file_);
  }
  std::string problem;
  const bool saved = WriteTo(file, problem);
  if (!saved && !saveFailing_) {
    const std::string text = "The observer log could not be saved to " + file.string() + ": " + problem;
    session_.LogAndTell(kTitle, text);
  }
  saveFailing_ = !saved;
  return saved;
}

bool FormObserverLog::WriteTo(const std::filesystem::path& file, std::string& problem) {
  const RichText text = RichTextOf(*text_->document());
  const bool rtf = IsRtf(file);
  if (!ReplaceTextFile(session_.host.files, file, rtf ? WriteRtf(text) : PlainText(text), problem)) return false;
  file_ = file;
  hasFile_ = true;
  text_->document()->setModified(false);
  KeepSetting(session_, Section::Settings, "OLastExt", rtf ? "rtf" : "txt");
  ShowName();
  const int pictures = rtf ? 0 : PicturesIn(text);
  const std::string without =
      pictures > 0 ? " without its pictures, " + NumberText(std::int64_t{pictures}) + ": the RTF form keeps them" : "";
  statusBar()->showMessage(ToQString("Saved " + file.string() + without));
  return true;
}

void FormObserverLog::AutoSave() {
  if (session_.settings.observerLog.OAutoSave && !asking_) SaveUnasked();
}

bool FormObserverLog::MayClose() {
  if (!HasUnsaved()) return true;
  const Settings& settings = session_.settings;
  if (settings.observerLog.OAutoSave || !settings.program.ShowMsgBox) {
    if (SaveUnasked()) return true;
    if (!settings.program.ShowMsgBox) return false;
  }
  return AskToSave("Observer Log Not Saved", Name() + "\nDo you want to save the observer log?");
}

bool FormObserverLog::MayReplaceText() {
  if (!HasUnsaved()) return true;
  if (!session_.settings.program.ShowMsgBox) return SaveUnasked();
  return AskToSave("File Not Saved", "Do you want to save " + Name() + " ?");
}

// False when the text must stay: cancelled, or not saved after all.
bool FormObserverLog::AskToSave(const char* title, const std::string& text) {
  if (asking_) return false;
  asking_ = true;
  const Answer answer = session_.host.dialogs.Ask({title, text, Buttons::YesNoCancel, Answer::Yes});
  const bool settled = answer == Answer::No || (answer == Answer::Yes && Save());
  asking_ = false;
  return settled;
}

void FormObserverLog::Load() {
  if (!MayReplaceText()) return;
  const int revision = text_->document()->revision();
  const auto chosen = AskOpen("Load Observer Log", Filter(Ending()));
  if (!chosen) return;
  const bool entriesCame = text_->document()->revision() != revision;
  if (!entriesCame || MayReplaceText()) LoadFile(*chosen);
}

void FormObserverLog::LoadFile(const std::string& path) {
  std::string problem;
  const auto contents = ReadTextFile(session_.host.files, path, problem);
  const bool rtf = IsRtf(path);
  std::optional<RichText> text;
  if (contents) {
    text = rtf ? ReadRtf(*contents) : RichOfPlain(*contents);
    problem = text ? "" : "it is no rich text file";
  }
  if (text && LengthOf(*text) > kMostCharacters) problem = "it is longer than a log can be";
  if (!problem.empty()) return TellProblem("Could not load " + path + ": " + problem);

  text_->document()->setUndoRedoEnabled(false);
  text_->clear();
  QTextCursor cursor(text_->document());
  InsertRichText(*text, cursor);
  text_->document()->setUndoRedoEnabled(true);
  text_->document()->setModified(false);
  text_->moveCursor(QTextCursor::End);
  file_ = path;
  hasFile_ = true;
  full_ = false;
  KeepSetting(session_, Section::Settings, "OLastExt", rtf ? "rtf" : "txt");
  ShowName();
}

std::optional<std::string> FormObserverLog::AskOpen(const char* title, const char* filter) {
  const std::filesystem::path folder = hasFile_ ? file_.parent_path() : OLogFolder(session_, form_.Window());
  return session_.host.dialogs.AskOpenFile({title, folder.string(), "", "", filter});
}

void FormObserverLog::AddFileReference() {
  const auto file = AskOpen("File Reference", kAny);
  if (file) AddEntry(std::string(kFileReference) + *file, false);
}

void FormObserverLog::AppendFile() {
  const auto file = AskOpen("Append File", kTextOrAny);
  if (!file) return;
  std::string problem;
  const auto contents = ReadTextFile(session_.host.files, *file, problem);
  if (!contents) return TellProblem("Could not read " + *file + ": " + problem);
  AddEntry(*contents, false);
}

void FormObserverLog::LoadMacros() {
  const std::string folder = session_.store.GetSetting(Section::Settings, "OMacroPath");
  const auto file = session_.host.dialogs.AskOpenFile(
      {"Load Observer Log Macros From File  (ext =tvo)", folder, "", ".tvo", kMacroFilter});
  if (!file) return;
  std::string problem = "it holds no macros";
  const auto contents = ReadTextFile(session_.host.files, *file, problem);
  const auto macros = contents ? ParseOMacros(*contents) : std::nullopt;
  if (!macros) return TellProblem("Could not load " + *file + ": " + problem);
  SaveOMacros(session_.store, *macros);
  KeepSetting(session_, Section::Settings, "OMacroPath", std::filesystem::path(*file).parent_path().string());
  ShowMacros();
}

void FormObserverLog::SaveMacros() {
  const std::string folder = session_.store.GetSetting(Section::Settings, "OMacroPath");
  const auto file = session_.host.dialogs.AskSaveFile({"Save Observer Log Macros to File (ext=tvo)",
                                                       folder.empty() ? session_.home.string() : folder, "macros.tvo",
                                                       ".tvo", kMacroFilter});
  if (!file) return;
  std::string problem;
  if (!ReplaceTextFile(session_.host.files, *file, WriteOMacros(macros_), problem)) {
    return TellProblem("Could not save " + *file + ": " + problem);
  }
  KeepSetting(session_, Section::Settings, "OMacroPath", std::filesystem::path(*file).parent_path().string());
}

void FormObserverLog::TellProblem(const std::string& text) {
  session_.Add2SLog(text);
  session_.host.dialogs.ShowMessage(kTitle, text);
}

}  // namespace tarvolt
