#pragma once

// Every text of a language file by its name. Its number is its place in the list, from 0: a new
// text goes to the end of PAVOLINE_MORE, and no name stands twice. The tools that make and check
// the language files read this file too, so each name keeps a line of its own. lang/README.md has
// the translators' view.

// What [Option] says of a language itself, with the key in the file.
#define PAVOLINE_LANGUAGE_OPTIONS(X) \
  X(Font, "font")                    \
  X(Widths, "Widths")                \
  X(CodePage, "CodePage")            \
  X(Locale, "Locale")

// What the program says: String(n).
#define PAVOLINE_STRINGS(X) \
  X(StatusNormal)           \
  X(StatusWide)             \
  X(Start)                  \
  X(Busy)                   \
  X(GhostMissingLine)       \
  X(BrowseTitle)            \
  X(ImageFilter)            \
  X(WrongEncoding)          \
  X(Information)            \
  X(Ok)                     \
  X(Cancel)                 \
  X(SourceMissing)          \
  X(Error)                  \
  X(NoEdition)              \
  X(GhostMissing)           \
  X(BootMissing)            \
  X(InstallMissing)         \
  X(ConfirmKeep)            \
  X(ConfirmTail)            \
  X(ConfirmFormat)          \
  X(ToolMissing)            \
  X(CloseQuestion)          \
  X(CloseTitle)             \
  X(CreatingFiles)          \
  X(Extracting)             \
  X(ApplyingMetadata)       \
  X(Searching)              \
  X(Stop)                   \
  X(MountFailed)            \
  X(NoImageInIso)           \
  X(ApplyFailed)            \
  X(Formatting)             \
  X(FormatMissing)          \
  X(FormatMissingFile)      \
  X(FormatMissingStart)     \
  X(FormatMissingKeep)      \
  X(BootFiles)              \
  X(BootSector)             \
  X(WritingAnswerFile)      \
  X(RunningPlugin)          \
  X(Finished)               \
  X(NoShutdown)             \
  X(Restarting)             \
  X(AddingDrivers)          \
  X(SearchingDrivers)       \
  X(ListNotReady)           \
  X(ColumnDrive)            \
  X(ColumnLabel)            \
  X(ColumnDisk)             \
  X(ColumnFileSystem)       \
  X(ColumnSize)             \
  X(ChooseBootTitle)        \
  X(ChooseInstallTitle)     \
  X(NoPartition)            \
  X(Search)                 \
  X(SearchDone)             \
  X(UserName)               \
  X(ComputerName)           \
  X(Workgroup)              \
  X(NamesTitle)             \
  X(NamesMenu)              \
  X(ImagesTitle)            \
  X(SaveSettings)           \
  X(BootRepairMenu)         \
  X(Help)                   \
  X(About)                  \
  X(LanguageFile)           \
  X(SettingsSaved)          \
  X(ConfirmBootRepair)      \
  X(BootReport)             \
  X(NoVirtualDisks)         \
  X(VirtualDisk)            \
  X(ApplyMode)              \
  X(SourceOnTarget)         \
  X(ColumnName)             \
  X(ColumnFolder)           \
  X(ColumnKind)             \
  X(ColumnDate)             \
  X(CannotWrite)            \
  X(Close)                  \
  X(AttachTitle)            \
  X(VirtualDiskFilter)      \
  X(AttachFailed)           \
  X(Attached)               \
  X(VirtualDiskDone)        \
  X(DetachTitle)            \
  X(DetachFailed)           \
  X(Detached)               \
  X(Attach)                 \
  X(Detach)                 \
  X(Create)                 \
  X(CreateTitle)            \
  X(File)                   \
  X(Format)                 \
  X(Size)                   \
  X(Type)                   \
  X(Fixed)                  \
  X(Expandable)             \
  X(VolumeLabel)            \
  X(CreateNow)              \
  X(BadFileName)            \
  X(BadSize)                \
  X(CreateFailed)           \
  X(Details)                \
  X(NoLetter)               \
  X(FolderMissing)          \
  X(SizeTooLarge)           \
  X(NotEnoughSpace)         \
  X(Created)                \
  X(CreatedDrive)           \
  X(Licence)                \
  X(CopyingImage)           \
  X(Version)                \
  X(RunningSystem)          \
  X(Tools)

// The fixed captions of the main window: Caption(n).
#define PAVOLINE_CAPTIONS(X) \
  X(Image)                   \
  X(Edition)                 \
  X(BootPartition)           \
  X(InstallPartition)        \
  X(RepairBoot)              \
  X(Restart)                 \
  X(ChooseBoot)              \
  X(ChooseInstall)           \
  X(DoNotFormat)             \
  X(AnswerFile)              \
  X(Drivers)                 \
  X(Plugin)                  \
  X(Options)

// What it says beyond the numbered table: More(n).
#define PAVOLINE_MORE(X) \
  X(Confirm)             \
  X(VolumeFacts)         \
  X(NoLabel)             \
  X(LiesOnTarget)        \
  X(BootIsSystem)        \
  X(OtherVolume)         \
  X(NoList)              \
  X(GhostComma)          \
  X(LendLetter)          \
  X(NoBootTools)         \
  X(Incomplete)          \
  X(NoBootFiles)         \
  X(DriversFailed)       \
  X(DriversMissing)      \
  X(NothingToRepair)     \
  X(BootPutBack)         \
  X(OtherPartitions)     \
  X(Fault)               \
  X(TempFile)            \
  X(CloseRepair)         \
  X(Letterless)          \
  X(ToolSaid)            \
  X(RestartsSoon)        \
  X(StopButton)          \
  X(NotStarted)          \
  X(NoSettings)          \
  X(Untold)              \
  X(NamedMissing)        \
  X(DriversNamed)        \
  X(NamedUsable)         \
  X(Phase)               \
  X(Gone)                \
  X(Left)                \
  X(AtLeastLeft)         \
  X(Percent)             \
  X(Menu)                \
  X(StopQuestion)        \
  X(ColumnDiskNumber)    \
  X(ColumnFree)          \
  X(Progress)            \
  X(DetailsButton)       \
  X(DryRun)              \
  X(Passed)              \
  X(Plan)                \
  X(Commands)            \
  X(Assumed)             \
  X(NotRunningSystem)    \
  X(SourceThere)         \
  X(EditionChosen)       \
  X(GhostUsable)         \
  X(BootThere)           \
  X(InstallListed)       \
  X(NothingLost)         \
  X(ToolUsable)          \
  X(AnswerFileMarked)    \
  X(LentLetter)          \
  X(ListsAgain)          \
  X(WouldEnd)            \
  X(NoPassword)          \
  X(PartLacks)           \
  X(NotFirstPart)        \
  X(SplitWimboot)        \
  X(TooManyParts)        \
  X(SplitUsable)         \
  X(PrepareMenu)         \
  X(PrepareTitle)        \
  X(OnlyEmptyDisks)      \
  X(NoEmptyDisk)         \
  X(DiskNumber)          \
  X(Uefi)                \
  X(Bios)                \
  X(UefiPartitions)      \
  X(BiosPartitions)      \
  X(BiosTooLarge)        \
  X(Prepare)             \
  X(PrepareQuestion)     \
  X(DiskChanged)         \
  X(Preparing)           \
  X(NotPrepared)         \
  X(Prepared)            \
  X(ClosePrepare)
