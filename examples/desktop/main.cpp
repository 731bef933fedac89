// vesk-desktop: the sample protocol's contact list in a tree view beside the
// plugin's settings page. The plugin runs in a thread of its own and answers
// through plugin actions and wait objects.
//
// vesk-desktop --screenshot FILE.png moves a contact and saves a setting
// through the plugin, checks what the plugin says it did, saves a picture of
// the window and exits (0 when every check held).

#include "icons.h"
#include "plugin.h"
#include "window.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QSortFilterProxyModel>
#include <QtCore/QTemporaryDir>
#include <QtCore/QThread>
#include <QtCore/QThreadPool>
#include <QtGui/QImage>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QTreeView>

#include <cstdio>

namespace {

// The plugin's thread with the plugin and the host's dispatcher in it.
class PluginThread
{
public:
    explicit PluginThread(QString const& iconDir)
        : plugin(iconDir)
    {
        thread.setObjectName(QStringLiteral("plugin"));
        plugin.moveToThread(&thread);
        dispatcher.moveToThread(&thread);
        VeskCallActionEvent::dispatcher = &dispatcher;
        thread.start();
    }
    ~PluginThread()
    {
        thread.quit();
        thread.wait();
        VeskCallActionEvent::dispatcher = nullptr;
    }

    QThread thread;
    DesktopPlugin plugin;
    Dispatcher dispatcher;
};

bool check(bool ok, char const* what)
{
    std::printf("vesk-desktop: %s: %s\n", what, ok ? "ok" : "FAILED");
    return ok;
}

// What the screenshot shows, done the way a user would, then checked with
// the plugin.
bool script(Window& window, DesktopPlugin* plugin)
{
    bool ok = true;
    VeskBuddyModel* const model = window.model();
    auto find = [model](char const* name) {
        return model->match(model->index(0, 0), Qt::DisplayRole, QString::fromUtf8(name), 1,
                            Qt::MatchExactly | Qt::MatchRecursive)
            .value(0);
    };
    auto* const proxy = static_cast<QSortFilterProxyModel*>(window.tree()->model());
    window.tree()->setCurrentIndex(proxy->mapFromSource(find("Carol")));
    window.groupChoice()->setCurrentIndex(window.groupChoice()->findText(QStringLiteral("Colleagues")));
    ok &= check(find("Carol").parent().data().toString() == QStringLiteral("Friends"),
                "Carol starts in Friends");
    ok &= check(window.moveSelected(), "move Carol to Colleagues");
    ok &= check(find("Carol").parent().data().toString() == QStringLiteral("Colleagues"),
                "the tree shows Carol under Colleagues");

    auto* const nick = qobject_cast<QLineEdit*>(window.form()->editorFor(QStringLiteral("nick")));
    ok &= check(nick != nullptr, "the page has a nickname field");
    if (nick)
        nick->setText(QStringLiteral("Alice A."));
    window.save();

    QStringList const log = VeskWait::sendMessage(new Question(Question::Log), plugin).toStringList();
    ok &= check(log.contains(QStringLiteral("moved carol@work to Colleagues")), "the plugin saw the move");
    ok &= check(log.contains(QStringLiteral("saved 1 fields")), "the plugin merged the saved field");
    QList<VeskField> const page = VeskWait::sendMessage(new Question(Question::Page), plugin).toFieldList();
    bool saved = false;
    for (VeskField const& field : page)
        saved = saved
                || (field.getId() == QStringLiteral("nick") && field.getText() == QStringLiteral("Alice A."));
    ok &= check(saved, "the plugin keeps the new nickname");
    ok &= check(window.form()->changedFields().isEmpty(), "nothing is left unsaved");
    return ok;
}

} // namespace

int main(int argc, char** argv)
{
    // A screenshot needs no display.
    for (int i = 1; i < argc; ++i) {
        if (qstrcmp(argv[i], "--screenshot") == 0 && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication app(argc, argv);
#if defined(__SANITIZE_THREAD__)
    // QtGui paints large areas with the help of the global thread pool, whose
    // workers pass its queue among themselves under a lock ThreadSanitizer
    // cannot see; with one worker there is no such hand-over.
    QThreadPool::globalInstance()->setMaxThreadCount(1);
#endif
    QCommandLineParser parser;
    parser.addHelpOption();
    QCommandLineOption const screenshot(QStringLiteral("screenshot"),
                                        QStringLiteral("Save a picture of the window to <file> and exit."),
                                        QStringLiteral("file"));
    parser.addOption(screenshot);
    parser.process(app);

    QTemporaryDir icons;
    if (!icons.isValid() || !drawIcons(icons.path())) {
        std::fprintf(stderr, "vesk-desktop: cannot write the presence icons\n");
        return 1;
    }
    PluginThread plugin(icons.path());
    int status = 0;
    {
        Window window(&plugin.plugin);
        window.resize(1040, 900);
        window.load();
        window.show();
        if (parser.isSet(screenshot)) {
            bool const ok = script(window, &plugin.plugin);
            QApplication::processEvents();
            // Drawn straight into the format the PNG writer takes, so the
            // picture needs no conversion afterwards.
            QImage picture(window.size(), QImage::Format_ARGB32);
            picture.fill(Qt::transparent);
            window.render(&picture);
            bool const saved = picture.save(parser.value(screenshot));
            check(saved, "the picture is saved");
            status = ok && saved ? 0 : 1;
        } else {
            status = app.exec();
        }
    }
    return status;
}
