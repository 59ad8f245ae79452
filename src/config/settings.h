// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace tarvolt {

inline constexpr int kChannels = 8;

/// Inputs of the mixer, each with a background of its own.
inline constexpr int kMixerInputs = 4;

/// What SoundCardName reads while there is no sound input.
inline constexpr const char* kNoSoundCard = "None Available";

/// The channel table.
struct ChannelSettings {
  std::array<std::int16_t, kChannels> Dsrc{};                ///< source numbers; the first 0 ends the list
  std::array<std::int16_t, kChannels> Detection{};           ///< 1 Peak, 2 Average, 3 Power
  std::array<std::string, kChannels> ChannelLabel{};         ///< key Channel<n>Label
  std::array<double, kChannels + 1> DefaultChannelOffset{};  ///< key Channel<n>Offset; the ninth has no channel
  std::array<std::int32_t, kChannels> PenColor{};            ///< key Channel<n>PenColor; blue, green, red bytes
  std::array<std::int32_t, kChannels> LineStyle{};
  std::array<std::string, kChannels> Equ{};         ///< equation texts; a blank for none
  std::array<std::int16_t, kChannels> ApplyToCH{};  ///< 1 applies the equation to the channel
  std::array<bool, kChannels> ChTriggerEnabled{};   ///< triggers of the channel are tested
  std::array<std::string, kChannels> CHTrigger{};   ///< ten digits, one a trigger slot, above 0 watches the channel
  std::array<std::int32_t, kChannels> LJU12se{};    ///< 1 for a differential pair
  std::array<std::int32_t, kChannels> LJU12gain{};  ///< gain number of a differential pair
  std::array<std::int32_t, kChannels> LJU3Port{};
  std::string EquString{};
  bool ApplyToIncoming{};  ///< equations work on each sample as it arrives
  bool UseOffsets{};
  bool SendOffsetsToClients{};
};

/// Timing of a run.
struct TimingSettings {
  double SampleRate{};              ///< sample period in milliseconds, despite the name
  std::int32_t vAvg{};              ///< source reads averaged into a sample
  std::int32_t ClientAvg{};         ///< samples of a server averaged into one of a client
  std::int32_t ChartUpdateRate{};   ///< finished samples a repaint
  std::int32_t ClientUpdateRate{};  ///< the same in a client window
  double ChartWidth{};              ///< visible span in seconds
  std::int32_t MaxArrayCount{};     ///< capacity of the sample store
  double MaxDuration{};             ///< longest log in days
  bool Continuous{};                ///< at a limit start a new log
  bool UseRestartTime{};
  std::string RestartTime{};  ///< "hh:nn:ss"
  std::int32_t TimerType{};   ///< 0 the sampling timer, 1 the sound card's buffers
  std::int16_t TimerPriority{};
  bool StartOnSecondBoundary{};
  bool TimeRefZero{};  ///< the x axis counts from the date of the first sample
  bool NoTimeStamps{};
  std::int16_t AvgSamplingPeriod{};  ///< seconds of the channel average
};

/// Time and place.
struct PlaceSettings {
  double TZ{};  ///< local time minus UT in hours
  bool DetectTZ{};
  bool LogUsingUT{};
  bool LogLMST{};
  double UserLat{};  ///< degrees, north positive, -999 for none
  double UserLng{};  ///< degrees, west positive, -999 for none
  bool DisplayWest{};
  std::int32_t SynchOnStart{};     ///< 1 sets the clock when the program starts
  std::int32_t SynchOnRun{};       ///< 1 sets it when a chart starts
  std::int32_t SynchOnInterval{};  ///< 1 sets it every ATinterval minutes
  std::int32_t ATinterval{};       ///< minutes
  std::string TimeServer{};
  std::int32_t TimeServerIndex{};  ///< row of the list of time servers
};

/// The station.
struct StationSettings {
  std::string LocalName{};
  std::string Author{};
  std::string QTH{};
  std::string ServerEmail{};
  std::string PublishInfo{};
};

/// Data files.
struct FileSettings {
  std::string DataDirectory{};  ///< empty for the folder under the station's home
  bool OrganizeByDay{};
  bool OrganizeByMonth{};
  bool AutoSaveStandAlone{};
  bool AutoSaveClient{};
  bool AutoSaveSessionLog{};
  bool PromptBeforeSaving{};
  bool DiskBackUp{};
  bool ClientDiskBackUp{};
  bool MiniServer{};
  bool MiniClient{};
  bool SaveAsIntegers{};
  std::int32_t SaveIF{};  ///< above 0 saves from SaveIFVal up, below 0 from it down, 0 always
  double SaveIFVal{};
  std::string NotesFileName{};
  bool PromptTimeStamps{};
  bool ShowLoadOptions{};
  bool FLO_LocalOffsets{};
  bool FLO_FileOffsets{};
  std::int32_t MetaDataActive{};  ///< not 0 puts the metadata file into every chart
  std::string MetaDataFileName{};
  std::string DefaultTriggerFile{};
};

/// The observer's log, and what goes into it by itself.
struct ObserverLogSettings {
  bool LoadLogOnStartUp{};
  std::string DefaultLogDirectory{};  ///< empty for the data directory
  bool OLogUT{};
  bool OAutoSave{};
  std::string oDateFormat{};  ///< "MM/DD/YYYY", "DD/MM/YYYY", "VERBOSE" or empty
  bool StoreLogWithObservation{};
  bool LAllChat{};
  bool LChatMacros{};
  bool LClientIdentity{};
  bool LClientTimes{};
  bool LImages{};
  bool LLocalStart{};
  bool LMsgs{};
  bool LocalIdentity{};
  bool LWaveRecord{};
};

/// The User Data Source.
struct UdsSettings {
  std::string UDSip{};
  std::int32_t UDSport{};
  std::string UDSexe{};
  bool StartUDS{};
  bool UDSpush{};
  std::string TVudsIP{};    ///< local address, empty for any
  std::string TVudsPort{};  ///< local port, empty for a free one
};

/// Converters on the parallel port.
struct LptSettings {
  std::int32_t LPTPortAddress{};
  bool MAX186Bipolar{};
  bool MAX186Differential{};
};

/// Sound.
struct SoundSettings {
  std::string SoundCardName{};  ///< as the host lists it; kNoSoundCard for none
  std::string Source{};         ///< name of the mixer's input
  std::int32_t sWavFormat{};    ///< row of the sound formats
  std::int32_t Pbuffer{};       ///< sound buffer in bytes with TimerType 0
  double PreBuffLen{};          ///< pre-buffer of the WAV recorder in seconds
  bool MixerEnabled{};
  std::int32_t MixerDeviceNum{};
  std::int32_t MixerMicVol{};
  std::int32_t MixerLineVol{};
  std::int32_t MixerWaveVol{};
  std::int32_t MixerStereoMixVol{};
};

/// Kept for each sound card by itself, in a section of the store that bears its name.
struct CardSettings {
  double PwrMultiL{};                                 ///< the mean square of the left side is divided by it
  double PwrMultiR{};                                 ///< the same for the right side
  double SCTadjust{};                                 ///< correction factor of the sound card's clock
  std::int16_t MixerSource{};                         ///< 0 Line, 1 Mic, 2 Wave, 3 Stereo Mix
  std::array<std::int16_t, kMixerInputs> LCHbkgnd{};  ///< background of the left side, by MixerSource
  std::array<std::int16_t, kMixerInputs> RCHbkgnd{};
};

/// The WAV recorder.
struct WavSettings {
  bool WavTimed{};
  bool WavTimedRepeat{};
  std::int32_t WavTimedSHr{};  ///< start of a timed recording
  std::int32_t WavTimedSMin{};
  std::int32_t WavTimedSSec{};
  std::int32_t WavTimedEHr{};  ///< its end
  std::int32_t WavTimedEMin{};
  std::int32_t WavTimedESec{};
  bool UseUpperWavThreshold{};
  bool UseLowerWavThreshold{};
  double WavThreshold{};
  double LowerWavThreshold{};
  std::int16_t WavThresholdCH{};
  std::int16_t LowerWavThresholdCH{};
  std::int16_t WavLingerTime{};       ///< seconds
  std::int32_t MaxRecordingLength{};  ///< seconds
  double MaxFileSizeTotal{};          ///< bytes
  bool WavRepeat{};
};

/// The chart.
struct ChartSettings {
  bool AutoScale{};        ///< written to profiles a second time as ChartAutoScale
  double ChartYaxisMax{};  ///< top of the y axis without AutoScale
  std::string XALabel{};
  std::string YALabel{};
  std::string YAxisTitle{};
  std::int32_t YAxisLabelPrecision{};
  std::int32_t XAxisTickMajor{};
  std::int32_t XAxisTickMinor{};
  std::int32_t YAxisTickMajor{};
  std::int32_t YAxisTickMinor{};
  std::string XYLabelFontName{};
  double XYLabelFontSize{};  ///< points
  bool XYLabelFontBold{};
  bool XYLabelFontItalic{};
  std::int32_t XYLabelFontColor{};
  bool ArrowButtons{};
  bool ArrowsReverse{};
  std::int32_t ClickInc{};  ///< per cent of the span that a scroll or zoom moves
  bool DisplayMilliseconds{};
  bool AutoTitle{};
  std::string AutoTitleFormat{};
  bool ShowStatusBar{};
};

/// Network.
struct NetworkSettings {
  std::int32_t LocalServerPort{};
  std::int32_t LocalClientPort{};
  bool AutoSelectClientPort{};
  std::int16_t ConnectionTimeOut{};  ///< seconds
  std::int32_t MaxClients{};
  bool ChatEnabled{};
  bool CombineChat{};
  bool AutoPublish{};
  bool ConnectViaWeb{};
  std::string ILS{};         ///< endpoint of the directory of servers
  std::string ComTestURL{};  ///< server of the connectivity test
  std::string PermanentIP{};
  bool AlwaysUseThisIP{};
  bool ManualIPEntry{};
  bool IPCheck{};
  bool IPreCheck{};
  bool CheckOnline{};
  bool ShowFixedlist{};
  bool AutoRAS{};
  std::string iDefaultConnection{};
  std::int32_t iConnectionType{};
  bool iHangUp{};
  bool AllowRemoteAdmin{};
  std::string LocalAdminIP{};
  std::int32_t LocalAdminPort{};
  bool PromptForAdmin{};
};

/// Images of the chart.
struct ImageSettings {
  bool SaveFTPImage{};
  std::int32_t SaveFTPImagePeriod{};
  std::int32_t SaveFTPFullView{};
  bool AutoStartFTP{};
  bool AutoStartFTPManager{};
};

/// How the program behaves towards a person.
struct ProgramSettings {
  bool ShowMsgBox{};  ///< off: nothing ever waits for a person
  bool ShowHints{};
  bool AutoNews{};
  bool Warn{};
  bool RunMsgMgr{};
};

/// The session-wide settings, each under its key's own name. A default-constructed one holds the defaults of the table
/// of settings; a default path that begins with a backslash is still relative to the station's home. Indexed members
/// are counted from channel 0.
struct Settings {
  Settings();

  ChannelSettings channels;
  TimingSettings timing;
  PlaceSettings place;
  StationSettings station;
  FileSettings files;
  ObserverLogSettings observerLog;
  UdsSettings uds;
  LptSettings lpt;
  SoundSettings sound;
  CardSettings card;
  WavSettings wav;
  ChartSettings chart;
  NetworkSettings net;
  ImageSettings images;
  ProgramSettings program;
};

}  // namespace tarvolt
