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

-- What each issue code means, and what to do about it: the catalogue of issues, which fills it.
CREATE TABLE Zorvel_Resolutions (
    IssueCode VARCHAR(15) PRIMARY KEY,
    IssueShortDesc TEXT NOT NULL,
    Resolution TEXT NOT NULL,
    Severity VARCHAR(10) NOT NULL  -- critical, high, medium or low; datasets of an older version lack the column
);

COMMIT;
