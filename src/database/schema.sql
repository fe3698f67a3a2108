-- The template that every dataset database is copied from, and the empty master catalogue, which lies in the attached
-- database Master. The numbers are the characters that the import keeps of a text. Rows are also inserted by position, so
-- the order of the columns is part of the layout.

BEGIN;

CREATE TABLE Zorvel_Apps (
    AppUniqueRef INTEGER PRIMARY KEY,
    AppName VARCHAR(100) NOT NULL,
    AppOU VARCHAR(100) NOT NULL,
    AppCaption VARCHAR(100),
    AppIconOrder INTEGER,
    -- Application flags: each default is what holds while the flag's bit is clear.
    AFDisconnectable INTEGER NOT NULL DEFAULT 1,
    AFWaitOnForceRun INTEGER NOT NULL DEFAULT 0,
    AFShowProgress INTEGER NOT NULL DEFAULT 1,
    AFDistributeAlways INTEGER NOT NULL DEFAULT 0,
    AFPromptBeforeDist INTEGER NOT NULL DEFAULT 0,
    AFPromptForReboot INTEGER NOT NULL DEFAULT 1,
    AFInstallOnly INTEGER NOT NULL DEFAULT 0,
    AFRunOnce INTEGER NOT NULL DEFAULT 0,
    AFForceRunIfWS INTEGER NOT NULL DEFAULT 0,
    AFRun16BitSeparate INTEGER NOT NULL DEFAULT 0,
    AFClearUpNetwork INTEGER NOT NULL DEFAULT 1,
    AFPreInstallSched INTEGER NOT NULL DEFAULT 0,
    AFRebootType VARCHAR(20) NOT NULL DEFAULT 'If Needed',
    AFExeSecLevel VARCHAR(30) NOT NULL DEFAULT 'User',
    AFRunOption VARCHAR(20) NOT NULL DEFAULT 'Normal',
    -- Default association flags.
    DAFForceCache INTEGER NOT NULL DEFAULT 0,
    DAFQuickLaunch INTEGER NOT NULL DEFAULT 0,
    DAFSysTray INTEGER NOT NULL DEFAULT 0,
    DAFDesktop INTEGER NOT NULL DEFAULT 0,
    DAFStartMenu INTEGER NOT NULL DEFAULT 0,
    DAFForceRun INTEGER NOT NULL DEFAULT 0,
    DAFAppLaunch INTEGER NOT NULL DEFAULT 0,
    UNIQUE (AppName, AppOU)
);

CREATE TABLE Zorvel_AppDetails (
    AppUniqueRef INTEGER NOT NULL,
    Attribute TEXT,
    Data TEXT
);
CREATE INDEX Zorvel_AppDetails_App ON Zorvel_AppDetails (AppUniqueRef);

CREATE TABLE Zorvel_Macros (
    AppUniqueRef INTEGER NOT NULL,
    Macro VARCHAR(60),
    "Value" VARCHAR(255),
    MinSpace INTEGER,
    Prompt VARCHAR(255)
);
CREATE INDEX Zorvel_Macros_App ON Zorvel_Macros (AppUniqueRef);

CREATE TABLE Zorvel_Issues (
    AppUniqueRef INTEGER NOT NULL,
    EntryType VARCHAR(20),
    TargetFile VARCHAR(255),
    SourceFile VARCHAR(255),
    IssueCode VARCHAR(15)
);
CREATE INDEX Zorvel_Issues_App ON Zorvel_Issues (AppUniqueRef);
CREATE INDEX Zorvel_Issues_Code ON Zorvel_Issues (IssueCode);

CREATE TABLE Zorvel_CopyFiles (
    AppUniqueRef INTEGER NOT NULL,
    Target VARCHAR(255),
    Source VARCHAR(255),
    CopyMode VARCHAR(50)
);
CREATE INDEX Zorvel_CopyFiles_App ON Zorvel_CopyFiles (AppUniqueRef);

CREATE TABLE Zorvel_INISettings (
    AppUniqueRef INTEGER NOT NULL,
    Data VARCHAR(100),
    "Section" VARCHAR(100),
    "Value" VARCHAR(100),
    Target VARCHAR(250),
    Notes TEXT
);
CREATE INDEX Zorvel_INISettings_App ON Zorvel_INISettings (AppUniqueRef);

CREATE TABLE Zorvel_RegistrySettings (
    AppUniqueRef INTEGER NOT NULL,
    "Key" VARCHAR(255),
    Data VARCHAR(255),
    "Value" TEXT,
    Mode VARCHAR(50)
);
CREATE INDEX Zorvel_RegistrySettings_App ON Zorvel_RegistrySettings (AppUniqueRef);

CREATE TABLE Zorvel_AppAssociations (
    AppUniqueRef INTEGER NOT NULL,
    AssocByGroup TEXT,
    AssocByOU TEXT,
    AssocByWS TEXT,
    TotAssociations INTEGER,
    AppFingerPrint VARCHAR(70)
);
CREATE INDEX Zorvel_AppAssociations_App ON Zorvel_AppAssociations (AppUniqueRef);

CREATE TABLE Zorvel_Associations (
    AppUniqueRef INTEGER NOT NULL,
    FullUserID TEXT,
    FullAssociation TEXT,
    AssociationType TEXT
);
CREATE INDEX Zorvel_Associations_App ON Zorvel_Associations (AppUniqueRef);

CREATE TABLE Zorvel_Settings (
    Setting VARCHAR(50) PRIMARY KEY,
    "Value" TEXT
);
-- The last key handed out.
INSERT INTO Zorvel_Settings (Setting, "Value") VALUES ('NextAppUniqueRef', '0');

-- What the import says of itself: one row, written when it begins. Without a row, or while it has no Completed, the import
-- was not completed.
CREATE TABLE Zorvel_Import (
    Run DATETIME NOT NULL,  -- this and the others as the master catalogue has them
    Tree TEXT,
    OU TEXT,
    Description TEXT,
    AppCount INTEGER,
    CountFiles INTEGER,
    CountINI INTEGER,
    CountText INTEGER,
    CountMacros INTEGER,
    CountRegistry INTEGER,
    CountIssues INTEGER,
    Begun DATETIME NOT NULL,
    Completed DATETIME,
    -- The rows of each table when it was completed.
    Apps INTEGER,
    AppDetails INTEGER,
    Macros INTEGER,
    Issues INTEGER,
    CopyFiles INTEGER,
    INISettings INTEGER,
    RegistrySettings INTEGER,
    AppAssociations INTEGER,
    Associations INTEGER
);

CREATE TABLE Master.Zorvel_CaptureDetails (
    Captured DATETIME NOT NULL,  -- 'YYYY-MM-DD HH:MM:SS'
    Tree TEXT,
    OU TEXT,
    Description TEXT,
    AppCount INTEGER,
    DBName TEXT NOT NULL,
    CountFiles INTEGER,
    CountINI INTEGER,
    CountText INTEGER,
    CountMacros INTEGER,
    CountRegistry INTEGER,
    CountIssues INTEGER
);
CREATE INDEX Master.Zorvel_CaptureDetails_Captured ON Zorvel_CaptureDetails (Captured);
CREATE INDEX Master.Zorvel_CaptureDetails_Name ON Zorvel_CaptureDetails (DBName);

-- What each issue code means, and what to do about it.
CREATE TABLE Zorvel_Resolutions (
    IssueCode VARCHAR(15) PRIMARY KEY,
    IssueShortDesc TEXT NOT NULL,
    Resolution TEXT NOT NULL
);
INSERT INTO Zorvel_Resolutions (IssueCode, IssueShortDesc, Resolution) VALUES
('APPNODESC', 'The application has no description',
 'Write on the object''s Description page what the application is for and which version it delivers, so that others can tell it from its neighbours.'),
('APPNOADMIN', 'The application has no administrator notes',
 'Note on the Administrator Notes page who built the application, when and how, and what was changed since. The notes are never shown to users.'),
('APPNOASSOC', 'The application is associated with nobody',
 'Associate it with the users, groups, containers or workstations that need it, or delete the object when nobody does.'),
('APPCOMPLEXINI', 'The application has very many INI settings',
 'Every setting is compared at each distribution. Remove settings that the capture took along by chance, or deliver the finished INI file as a file copy.'),
('APPCOMPLEXTEXT', 'The application has very many text file changes',
 'Every change searches its file from the start. Remove changes that are not needed, or deliver the finished text file as a file copy.'),
('APPCOMPLEXREG', 'The application has very many registry settings',
 'Every setting is read and written at each distribution. Remove the settings that the capture took along by chance, or split the application into parts that are distributed on their own.'),
('INVALIDAN', 'The application''s name contains a blank',
 'Rename the object without blanks (use "_" or "-"); names with blanks have to be quoted in scripts and command lines. Users see the caption, which may hold blanks.'),
('INVALIDRO', 'The icon or run order is out of range',
 'Set the icon order to a number from 0 to 999, or to -1 for none. Other values leave the order of icons and of forced runs undefined.'),
('FILEOLD', 'Superseded copy of a file (.OLD)',
 'Remove the entry: an installer renamed the file when it put a newer one in its place, and nothing reads the old one.'),
('FILECOMP', 'Compressed installation file (name ends in "_")',
 'Remove the entry: the file is part of an installation source and has to be expanded before it is of use. Deliver the expanded file if the application needs it.'),
('FILESYSDLLFLAG', 'System DLL copied without regard to its version',
 'Set the copy mode to "Copy If Newer Version", so that a newer DLL on the workstation is not replaced by an older one.'),
('FILEPREFETCH', 'Prefetch file of the capture workstation',
 'Remove the entry: Windows writes prefetch files (.PF) for each workstation itself.'),
('FILETEMP', 'Temporary file',
 'Remove the entry: the file was in use by a program while the capture was taken and has no use elsewhere.'),
('FILEVIRUSDEFS', 'Usage file of a virus scanner''s definitions',
 'Remove the entry: the file tells which definitions are in use on the capture workstation, and misleads the scanner on any other.'),
('FILEICONCACHE', 'Icon cache of the desktop',
 'Remove the entry: Windows builds the icon cache on each workstation; a foreign one shows wrong icons.'),
('FILETEMPIF', 'File of the Internet Explorer cache (Temporary Internet Files)',
 'Remove the entry: cached pages belong to the user who browsed while the capture was taken.'),
('FILELOCALTEMP', 'File in a user''s temporary folder (Local Settings\Temp)',
 'Remove the entry: what installers leave in the temporary folder is not needed once they are done.'),
('FILEIEHIST', 'Internet Explorer history',
 'Remove the entry: the history belongs to the user who browsed while the capture was taken.'),
('FILEIECONT', 'Internet Explorer content cache',
 'Remove the entry: cached content belongs to the user who browsed while the capture was taken.'),
('FILEPWL', 'Windows password list (.PWL)',
 'Remove the entry at once: the file holds passwords of a user of the capture workstation and overwrites those of the users it is sent to.'),
('FILEPERFMON', 'Performance monitor file (.PML, .PMA)',
 'Remove the entry: such files record measurements or counters of the capture workstation.'),
('FILENAVQ', 'Quarantined file of a virus scanner (.VBN)',
 'Remove the entry: the file holds a program that the scanner found infected. Check the capture workstation before capturing again.'),
('FILEEXCELAR', 'Excel recovery file (.XAR)',
 'Remove the entry: Excel writes the file to save open workbooks; it is no part of an application.'),
('FILEPDOWN', 'Unfinished download',
 'Remove the entry: the file is a fragment that a download program left behind.'),
('FILEBAK', 'Backup copy of a file',
 'Remove the entry: the file was kept by an editor or an installer for a way back on the capture workstation only.'),
('FILEPART', 'Swap file of Windows 3.x (386*.PAR)',
 'Remove the entry: the file is large, describes the capture workstation''s memory and does harm on any other.'),
('FILEDA0', 'Backup of the Windows registry (.DA0)',
 'Remove the entry: the file is a copy of the capture workstation''s registry and must not reach other workstations.'),
('FILEUSRCLASS', 'User''s class registry (USRCLASS.DAT)',
 'Remove the entry: the file is part of the registry of one user. Deliver the wanted values as registry settings.'),
('FILENTUSER', 'User''s registry (NTUSER.DAT)',
 'Remove the entry: the file is the registry of one user, and replaces that of every user it is sent to. Deliver the wanted values as registry settings.'),
('FILEPAGEFILE', 'Windows page file (PAGEFILE.SYS)',
 'Remove the entry: each workstation makes its own page file, which is in use while Windows runs.'),
('FILESWAP', 'Swap file (.SWP)',
 'Remove the entry: the file held the memory of a program or of Windows while the capture was taken.'),
('FILEDUMP', 'Memory dump of a crash',
 'Remove the entry: the file is large and may hold confidential data. Find out why the capture workstation crashed.'),
('FILEDELIS', 'Leftover of an InstallShield clean-up (_DELIS32.INI)',
 'Remove the entry: the file tells the installer what to delete at the next start of the capture workstation.'),
('FILEUNINST', 'InstallShield uninstaller (ISUNINST.EXE)',
 'Remove the entry and the uninstall entries of the registry: the application is removed through the launcher, not by its own uninstaller.'),
('FILEUNWISE', 'Wise uninstaller (UNWISE.EXE)',
 'Remove the entry and the uninstall entries of the registry: the application is removed through the launcher, not by its own uninstaller.'),
('FILESCHEDLOG', 'Log of the task scheduler (SCHEDLGU.TXT)',
 'Remove the entry: the scheduler of each workstation writes its own log and keeps it open.'),
('FILECONFIGMSI', 'Windows Installer rollback file (Config.msi)',
 'Remove the entry: the folder serves only while an installation is running. Capture again after a restart.'),
('FILEDLLCACHE', 'Copy of a protected system file (DLLCACHE)',
 'Remove the entry: Windows File Protection keeps this folder itself and restores its own versions.'),
('FILEPERFDATA', 'Performance counter data (Perflib_Perfdata)',
 'Remove the entry: the file existed only while a program on the capture workstation was running.'),
('FILEWINTEMP', 'File in the temporary folder of Windows',
 'Remove the entry: what installers leave in the temporary folder is not needed once they are done.'),
('FILEMACROSYTAX', 'Folder macro written without its asterisk',
 'Write the macro with an asterisk after the first percent sign, for example %*WinSysDir% for %WinSysDir%; without it the launcher looks for an ordinary macro of that name.'),
('FILECUSTOM', 'File on the custom file issue list',
 'Remove the entry, or take the name off FileIssue.dat (Advanced menu, Edit Custom File Issue List) if the file should be distributed after all.'),
('FILEPORTABLE', 'Fixed path of a Windows folder instead of a folder macro',
 'Windows may lie elsewhere on other workstations. Replace the beginning of the path by its folder macro: \Program Files\Common Files by %*ProgramFilesCommon% [Win2K+ ONLY]; \Windows\System32 and \WinNT\System32 by %*WinSysDir%; \Windows\Fonts and \WinNT\Fonts by %*Fonts%; any other path below \Windows or \WinNT by %*WinDir%.'),
('REGISTRYUNC', 'Registry value holds a UNC path',
 'The application depends on one server. Use a macro or a mapped drive for the path, so that it can be moved and reached at every site.'),
('REGISTRYEXCLUDE', 'Registry key that should not be distributed',
 'Remove the setting: the key describes the capture workstation or its user. Take the key off RegExclude.dat (Advanced menu, Edit Registry Issue List) if it should be distributed after all.'),
('MACROUNC', 'Macro value is a UNC path',
 'The application depends on one server. Use a mapped drive, or a macro that each site sets for itself.'),
('MACROSTP', 'SHORT_TARGET_PATH is not in 8.3 form',
 'Shorten every folder of the value to its 8.3 name (for example C:\PROGRA~1\MYAPP); programs that need the short path fail with a long one.');

COMMIT;
