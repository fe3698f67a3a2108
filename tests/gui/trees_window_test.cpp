// The Trees dialog, and trees that servers hold, in the main window: through keys, clicks and drops.
#include <QDropEvent>
#include <QInputDialog>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QTreeWidget>

#include "gui/main_window.h"
#include "platform/folder_lock.h"
#include "support/certificates.h"

namespace zorvel::test {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

const std::string kSite = LdifOrganization("LIVESITE") + LdifUnit("APPS", "o=LIVESITE") +
                          LdifApplication("Word", "ou=APPS,o=LIVESITE", "appPath: x\n") +
                          LdifApplication("Calc", "ou=APPS,o=LIVESITE", "appPath: y\n") +
                          "dn: cn=zorvel,o=LIVESITE\nobjectClass: user\ncn: zorvel\nuserPassword: right\n\n";

class TreesWindow : public MainWindowTest {
  protected:
    TreesWindow() { signal(SIGPIPE, SIG_IGN); }  // as the programs do

    static Slapd Serve(SlapdSettings settings = {}) {
        settings.access = "access to attrs=userPassword by * auth\naccess to * by * read\n";
        return Slapd(kSite, settings);
    }
    // Another tree, LIVE, beside T1; one of them is opened first.
    void AddLive(const std::string& lines, const std::string& preferred = "LIVE") {
        folder_.Write("Directory.toml", "preferred = '" + preferred +
                                            "'\n[[tree]]\nname = 'T1'\nldif = 'Trees/T1.ldif'\n"
                                            "[[tree]]\nname = 'LIVE'  # by hand\n" +
                                            lines);
    }
    // A window whose dialog has closed, as a window manager brings it back.
    static bool ComesBack(QWidget& window) {
        window.activateWindow();
        return TakesKeyboard(window);
    }
    // Presses the button of a letter and waits for what it does; buttons move first.
    static bool PressAlt(int key, const std::function<bool()>& done) {
        PressKey(key, Qt::AltModifier);
        return QTest::qWaitFor(done);
    }
    std::string Config() const { return folder_.Read("Directory.toml"); }
    // Opens the dialog by its keys; `act` is what is done there before it is closed.
    void InTrees(const std::function<void(QDialog&)>& act) {
        OnDialog([act](QDialog& dialog) {
            act(dialog);
            ASSERT_TRUE(ComesBack(dialog));
            PressKey(Qt::Key_Escape);
        });
        ASSERT_TRUE(ComesBack(*window_));
        PressKey(Qt::Key_L, Qt::AltModifier);
        PressKey(Qt::Key_T);
        ASSERT_TRUE(ComesBack(*window_));
    }
    static void Press(QDialog& dialog, const char* button) {
        QTest::mouseClick(&Control<QAbstractButton>(dialog, button), Qt::LeftButton);
    }
    static std::string Result(QDialog& dialog) {
        return Control<QPlainTextEdit>(dialog, "txtResult").toPlainText().toStdString();
    }
    static std::vector<std::string> Trees(QDialog& dialog) {
        std::vector<std::string> trees;
        auto& list = Control<QTreeWidget>(dialog, "lstTrees");
        for (int row = 0; row < list.topLevelItemCount(); ++row)
            trees.push_back(
                (list.topLevelItem(row)->text(0) + ": " + list.topLevelItem(row)->text(1)).toStdString());
        return trees;
    }
    std::vector<std::string> Selector() {
        std::vector<std::string> names;
        for (int i = 0; i < Get<QComboBox>("comTree").count(); ++i)
            names.push_back(Get<QComboBox>("comTree").itemText(i).toStdString());
        return names;
    }
    std::string Lock() { return Get<QLabel>("labTreeLock").accessibleDescription().toStdString(); }
    // Types into the password dialog, which must be the next.
    void GivePassword(const QString& password) {
        OnDialog([password](QDialog& dialog) {
            EXPECT_EQ(static_cast<QInputDialog&>(dialog).textEchoMode(), QLineEdit::Password);
            TypeText(password);
            PressKey(Qt::Key_Return);
        });
    }
    void Drop(QWidget& target, const std::string& file) {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(QString::fromStdString((folder_.path() / file).string()))});
        QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(&target, &enter);
        ASSERT_TRUE(enter.isAccepted());
        QDropEvent drop({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(&target, &drop);
        QCoreApplication::processEvents();
    }
};

TEST_F(TreesWindow, AddsTestsAndOpensAServerByKeysAlone) {
    const Slapd server = Serve();
    ASSERT_TRUE(Start());
    EXPECT_THAT(Lock(), AllOf(HasSubstr("LDIF export "), HasSubstr("T1.ldif")));
    InTrees([&](QDialog& dialog) {
        EXPECT_THAT(Trees(dialog), ElementsAre("T1 (opened first): LDIF export Trees/T1.ldif",
                                               "T2: LDIF export Trees/T2.ldif"));
        OnDialog([&](QDialog& form) {
            TypeText("T1");
            PressKey(Qt::Key_Tab);
            TypeText(QString::fromStdString(server.url()));
            PressKey(Qt::Key_O, Qt::AltModifier);  // Searches at once
            TypeText("4");
            PressKey(Qt::Key_Return);
            EXPECT_EQ(Control<QLabel>(form, "labFailure").text(), "Another tree has the same name");
            PressKey(Qt::Key_N, Qt::AltModifier);
            TypeText("LIVE");
            PressKey(Qt::Key_Return);
        });
        ASSERT_TRUE(PressAlt(Qt::Key_S, [&] { return Trees(dialog).size() == 3; }));
        ASSERT_TRUE(ComesBack(dialog));
        EXPECT_THAT(Trees(dialog).back(), AllOf(HasSubstr("LIVE: ldapi://"), HasSubstr(", anonymous")));
        ASSERT_TRUE(PressAlt(Qt::Key_T, [&] { return Result(dialog).starts_with("The tree"); }));
        EXPECT_THAT(Result(dialog), AllOf(HasSubstr("The tree 'LIVE' can be read.\nServer: ldapi://"),
                                          HasSubstr("\nIdentity: anonymous\n"),
                                          HasSubstr("\nApplications: 2 in the whole tree\n")));
        EXPECT_TRUE(PressAlt(
            Qt::Key_C, [&] { return QApplication::clipboard()->text().toStdString() == Result(dialog); }));
    });
    EXPECT_THAT(Selector(), ElementsAre("T1", "T2", "LIVE"));
    EXPECT_THAT(Config(), HasSubstr("\n\n[[tree]]\nname = \"LIVE\"\nldap = [\"" + server.url() +
                                    "\"]\nread_ahead = 4\n"));
    Get<QComboBox>("comTree").setFocus();
    PressKey(Qt::Key_End);
    EXPECT_THAT(Nodes(), ElementsAre("[Root]", " LIVESITE (0)", "  APPS (2)"));
    EXPECT_EQ(Lock(), "Local socket, server " + server.url() + ", as anonymous");
    ClickNode("APPS (2)");
    Click("butTreeControl_5");
    Answer(QMessageBox::No);
    Click("butGenerate");
    EXPECT_THAT(boxes_.front(), HasSubstr("Would you like to import"));
    EXPECT_THAT(folder_.Read("TempData/Zorvel_AppDetails.CSV"), AllOf(HasSubstr("Word"), HasSubstr("Calc")));
}

TEST_F(TreesWindow, EditsPrefersAndRemovesAndTheSelectorFollows) {
    folder_.Write("Directory.toml",
                  "# ours\n\n[[tree]]\nname = 'T1'\nldif = 'Trees/T1.ldif' # first\n\n"
                  "[[tree]]\nname = 'T2'\nldif = 'Trees/T2.ldif'\n");
    ASSERT_TRUE(Start());
    InTrees([&](QDialog& dialog) {
        OnDialog([](QDialog& form) {
            PressKey(Qt::Key_F, Qt::AltModifier);
            TypeText("gone.ldif");
            PressKey(Qt::Key_Return);
            EXPECT_EQ(Control<QLabel>(form, "labFailure").text(), "There is no file 'gone.ldif'");
            PressKey(Qt::Key_A, Qt::ControlModifier);
            TypeText("Trees/T1.ldif");
            PressKey(Qt::Key_N, Qt::AltModifier);
            TypeText("MAIN");
            PressKey(Qt::Key_Return);
        });
        PressKey(Qt::Key_Return);  // on the list
        ASSERT_TRUE(ComesBack(dialog));
        PressKey(Qt::Key_Down);
        Press(dialog, "butPrefer");
        EXPECT_THAT(Trees(dialog), ElementsAre("MAIN: LDIF export Trees/T1.ldif",
                                               "T2 (opened first): LDIF export Trees/T2.ldif"));
        FolderLock lock(folder_.path() / "Zorvel.lock", "Zorvel.lock");
        ASSERT_TRUE(lock.TryAcquire("zorvel-batch"));
        Press(dialog, "butRemove");
        lock.Release();
        EXPECT_EQ(Trees(dialog).size(), 2U) << "the question's default is No";
    });
    EXPECT_EQ(Config(),
              "preferred = \"T2\"\n\n# ours\n\n[[tree]]\nname = \"MAIN\"\nldif = 'Trees/T1.ldif' # first\n\n"
              "[[tree]]\nname = 'T2'\nldif = 'Trees/T2.ldif'\n");
    EXPECT_THAT(Selector(), ElementsAre("MAIN", "T2"));
    EXPECT_EQ(Get<QComboBox>("comTree").currentText(), "MAIN");
    EXPECT_THAT(LogText(), HasSubstr("Changing Tree to 'NDS:\\\\MAIN\\[Root]'"));
}

TEST_F(TreesWindow, WithoutATreeThereIsNoneUntilAFileIsDropped) {
    ASSERT_TRUE(Start());
    InTrees([&](QDialog& dialog) {
        for (int i = 0; i < 2; ++i) {
            Answer(QMessageBox::Yes);
            Press(dialog, "butRemove");
        }
        EXPECT_THAT(Trees(dialog), testing::IsEmpty());
    });
    EXPECT_EQ(Text("labCurrentOU").toStdString(), "No Trees found!");
    EXPECT_FALSE(Get<QComboBox>("comTree").isEnabled());
    EXPECT_FALSE(Get<QLabel>("labTreeLock").isVisible());
    InTrees([&](QDialog& dialog) {
        OnDialog([](QDialog& form) {
            EXPECT_EQ(Control<QLineEdit>(form, "txtName").text(), "T1");
            PressKey(Qt::Key_Return);
        });
        Drop(dialog, "Trees/T1.ldif");
        EXPECT_THAT(Trees(dialog), ElementsAre("T1: LDIF export Trees/T1.ldif"));
    });
    EXPECT_THAT(Selector(), ElementsAre("T1"));
    EXPECT_THAT(Nodes(), testing::Contains(" SITE (0)"));
}

TEST_F(TreesWindow, EscapeEndsATestAndNothingElse) {
    Slapd server = Serve();
    SlowProxy proxy(server.folder().path() / "socket");
    proxy.stalled = true;
    AddLive("ldap = ['" + proxy.url() + "']\n", "T1");
    ASSERT_TRUE(Start());
    InTrees([&](QDialog& dialog) {
        PressKey(Qt::Key_End);
        QTimer::singleShot(300, &dialog, [&] {
            EXPECT_THAT(Result(dialog), HasSubstr("Testing 'LIVE'... ESC ends the test."));
            EXPECT_FALSE(Control<QWidget>(dialog, "butClose").isEnabled());
            PressKey(Qt::Key_Escape);
        });
        EXPECT_TRUE(PressAlt(Qt::Key_T, [&] { return Result(dialog) == "The test was ended."; }));
        EXPECT_TRUE(dialog.isVisible());
    });
    EXPECT_THAT(LogText(), HasSubstr("The test was ended at user request"));
}

TEST_F(TreesWindow, AWrongPasswordIsToldAndTheRightOneTakenAlsoWhileATreeIsRead) {
    Slapd server = Serve();
    AddLive("ldap = ['" + server.url() + "']\nbind_dn = 'cn=zorvel,o=LIVESITE'\n");
    for (int step = 0; step < 2; ++step) {  // the tree is opened, and its root then chosen
        GivePassword("wrong");
        OnDialog([](QDialog&) { PressKey(Qt::Key_Return); });
    }
    ASSERT_TRUE(Start());
    ASSERT_EQ(boxes_.size(), 2U);
    EXPECT_THAT(boxes_[0], HasSubstr("the server does not accept 'cn=zorvel,o=LIVESITE' with this password"));
    EXPECT_EQ(Lock(), "Not connected yet");
    bool busy = false;
    Answer(QMessageBox::Yes);
    OnDialog([&](QDialog&) {
        busy = window_->controller().session().activity.Busy;
        TypeText("right");
        PressKey(Qt::Key_Return);
    });
    Click("butTreeControl_6");
    EXPECT_TRUE(busy);
    EXPECT_EQ(Lock(), "Local socket, server " + server.url() + ", as cn=zorvel,o=LIVESITE");
    EXPECT_THAT(Nodes(), testing::Contains("  APPS (2)"));

    server.Stop();
    ClickNode("APPS (2)");
    EXPECT_EQ(boxes_.size(), 4U);
    server.Start();
    Answer(QMessageBox::Yes);
    GivePassword("right");
    Click("butTreeControl_6");
    EXPECT_THAT(Nodes(), testing::Contains("  APPS (2)"));
    EXPECT_EQ(boxes_.size(), 5U);
    EXPECT_EQ(LogText().find("right"), std::string::npos);
}

TEST_F(TreesWindow, ARunEndsByEscapeOrWithTheServerAndTheNextOneWorks) {
    Slapd server = Serve();
    AddLive("ldap = ['" + server.url() + "']\n");
    settings_.pace = {1, 0};
    ASSERT_TRUE(Start());
    ClickNode("APPS (2)");
    Click("butTreeControl_5");
    const auto run = [&](QMessageBox::StandardButton answer, const std::function<void()>& meanwhile) {
        QTimer::singleShot(300, window_.get(), meanwhile);
        Answer(answer);
        Click("butGenerate");
    };
    const auto captured = [this] { return folder_.Read("TempData/Zorvel_CaptureDetails.CSV"); };
    run(QMessageBox::No, [&] {
        EXPECT_TRUE(window_->controller().session().activity.Busy);
        PressKey(Qt::Key_Escape);
    });
    EXPECT_THAT(captured(), HasSubstr("LIVE,APPS.LIVESITE,1,"));
    run(QMessageBox::Yes, [&] { server.Stop(); });
    EXPECT_THAT(boxes_.back(), HasSubstr("no server listens at this address"));
    EXPECT_EQ(captured(), "");
    server.Start();
    Answer(QMessageBox::Yes);
    Click("butTreeControl_6");
    Click("butTreeControl_5");
    run(QMessageBox::No, [] {});
    EXPECT_THAT(captured(), HasSubstr("LIVE,APPS.LIVESITE,2,"));
}

TEST_F(TreesWindow, AnExpiredCertificateIsToldInWords) {
    const TempFolder folder;
    const Certificates certificates(folder);
    const std::string url = "ldaps://127.0.0.1:" + std::to_string(FreePort());
    const Slapd server =
        Serve({.global = certificates.ServerLines("server", "IP:127.0.0.1", "-1"), .addresses = {url}});
    AddLive("ldap = ['" + url + "']\nca_file = '" + certificates.Path("ca.pem") + "'\n");
    ASSERT_TRUE(Start());
    ASSERT_EQ(boxes_.size(), 2U);
    EXPECT_THAT(boxes_[0], HasSubstr(url + ": the server's certificate has expired - ask the directory's"));
    InTrees([&](QDialog& dialog) {
        PressKey(Qt::Key_End);
        ASSERT_TRUE(PressAlt(Qt::Key_T, [&] { return Result(dialog).starts_with("The tree"); }));
        EXPECT_THAT(Result(dialog), HasSubstr("The tree 'LIVE' cannot be read:\nFAILED - Server: " + url));
    });
}

}  // namespace
}  // namespace zorvel::test
