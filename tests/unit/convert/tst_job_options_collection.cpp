#include "convert/CompressionChoice.h"
#include "convert/JobOptionsCollection.h"
#include "settings/IniFile.h"

#include "support/TestFolder.h"

#include <QMap>
#include <QTest>

using namespace Quorlin;

class TestJobOptionsCollection : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void takesTheEntriesInTheOrderOfTheFile();
    void readsTheFileItselfWithoutASettingsObject();
    void staysEmptyWithoutTheGroup();
    void staysEmptyWithoutTheFile();
    void keepsTheFirstOfTwoEntriesWithOneName();
    void countsFromOne();
    void hasNoLabelsUntilALanguageGivesThem();
    void aLanguageChangeKeepsTheSelectedEntry();
    void dropsASelectionBehindTheEnd();
    void leavesNothingSelectedWhenNothingWas();
    void givesAnEmptyLabelToANameWithoutOne();
    void forgetsWhatWasLoadedBefore();

private:
    IniFile settings(const QByteArray &bytes) const
    {
        IniFile file;
        if (file.Load(m_folder.write("Quorlin.ini", bytes)) != 0)
            QTest::qFail("the settings were not read", __FILE__, __LINE__);
        return file;
    }

    TestFolder m_folder;
};

namespace {

const QByteArray Shipped("[JobOptions]\r\nDefault = Default.joboptions\r\nLow = Low.joboptions\r\n"
                         "High = High.joboptions\r\n");

class ListedChoice : public CompressionChoice
{
public:
    [[nodiscard]] int position() const override { return selected; }
    void select(int position) override { selected = position; }
    void clear() override
    {
        labels.clear();
        selected = -1;
    }
    void add(const QString &label) override { labels.append(label); }

    QStringList labels;
    int selected = -1;
};

QString german(const QString &name)
{
    static const QMap<QString, QString> labels{
        {QStringLiteral("Default"), QStringLiteral("Üblich")},
        {QStringLiteral("Low"), QStringLiteral("Niedrig")},
        {QStringLiteral("High"), QStringLiteral("Hoch")}};
    return labels.value(name);
}

QString english(const QString &name)
{
    return name;
}

} // namespace

void TestJobOptionsCollection::takesTheEntriesInTheOrderOfTheFile()
{
    const auto file = settings("[Other]\nX = y\n" + Shipped);
    JobOptionsCollection options;
    options.load(QStringLiteral("/opt/quorlin"), &file);
    QCOMPARE(options.names(), (QStringList{QStringLiteral("Default"), QStringLiteral("Low"),
                                           QStringLiteral("High")}));
    QCOMPARE(options.Item(QStringLiteral("High"))->Filename(),
             QStringLiteral("/opt/quorlin/Settings/High.joboptions"));
}

void TestJobOptionsCollection::readsTheFileItselfWithoutASettingsObject()
{
    m_folder.write("Quorlin.ini", Shipped);
    JobOptionsCollection options;
    options.load(m_folder.path());
    QCOMPARE(options.Count(), 3);
    QCOMPARE(options.Item(1)->Filename(), m_folder.path("Settings/Default.joboptions"));
}

void TestJobOptionsCollection::staysEmptyWithoutTheGroup()
{
    const auto file = settings("[Printer]\nName = x\n");
    JobOptionsCollection options;
    options.load(m_folder.path(), &file);
    QCOMPARE(options.Count(), 0);
    ListedChoice choice;
    options.refresh(choice, english);
    QVERIFY(choice.labels.isEmpty());
}

void TestJobOptionsCollection::staysEmptyWithoutTheFile()
{
    const TestFolder empty;
    JobOptionsCollection options;
    options.load(empty.path());
    QCOMPARE(options.Count(), 0);
}

void TestJobOptionsCollection::keepsTheFirstOfTwoEntriesWithOneName()
{
    const auto file = settings("[JobOptions]\nLow = a\nHigh = b\nLow = c\nlow = d\n");
    JobOptionsCollection options;
    options.load(m_folder.path(), &file);
    QCOMPARE(options.names(),
             (QStringList{QStringLiteral("Low"), QStringLiteral("High"), QStringLiteral("low")}));
    QCOMPARE(options.Item(QStringLiteral("Low"))->Filename(), m_folder.path("Settings/a"));
}

void TestJobOptionsCollection::countsFromOne()
{
    const auto file = settings(Shipped);
    JobOptionsCollection options;
    options.load(m_folder.path(), &file);
    QCOMPARE(options.Item(1)->name(), QStringLiteral("Default"));
    QCOMPARE(options.Item(3)->name(), QStringLiteral("High"));
    QCOMPARE(options.Item(0), nullptr);
    QCOMPARE(options.Item(4), nullptr);
    QCOMPARE(options.Item(QStringLiteral("Medium")), nullptr);
}

void TestJobOptionsCollection::hasNoLabelsUntilALanguageGivesThem()
{
    const auto file = settings(Shipped);
    JobOptionsCollection options;
    options.load(m_folder.path(), &file);
    QCOMPARE(options.Item(1)->Libelle(), QString());
    ListedChoice choice;
    options.refresh(choice, german);
    QCOMPARE(options.Item(1)->Libelle(), QStringLiteral("Üblich"));
    QCOMPARE(choice.labels, (QStringList{QStringLiteral("Üblich"), QStringLiteral("Niedrig"),
                                         QStringLiteral("Hoch")}));
}

void TestJobOptionsCollection::aLanguageChangeKeepsTheSelectedEntry()
{
    const auto file = settings(Shipped);
    JobOptionsCollection options;
    options.load(m_folder.path(), &file);
    ListedChoice choice;
    options.refresh(choice, english);
    choice.select(2);
    options.refresh(choice, german);
    QCOMPARE(choice.selected, 2);
    QCOMPARE(choice.labels.at(choice.selected), QStringLiteral("Hoch"));
}

void TestJobOptionsCollection::dropsASelectionBehindTheEnd()
{
    const auto file = settings(Shipped);
    JobOptionsCollection options;
    options.load(m_folder.path(), &file);
    ListedChoice choice;
    choice.select(3);
    options.refresh(choice, english);
    QCOMPARE(choice.selected, -1);
}

void TestJobOptionsCollection::leavesNothingSelectedWhenNothingWas()
{
    const auto file = settings(Shipped);
    JobOptionsCollection options;
    options.load(m_folder.path(), &file);
    ListedChoice choice;
    options.refresh(choice, english);
    QCOMPARE(choice.selected, -1);
}

void TestJobOptionsCollection::givesAnEmptyLabelToANameWithoutOne()
{
    const auto file = settings("[JobOptions]\nHigh = a\nMine = b\n");
    JobOptionsCollection options;
    options.load(m_folder.path(), &file);
    ListedChoice choice;
    options.refresh(choice, german);
    QCOMPARE(choice.labels, (QStringList{QStringLiteral("Hoch"), QString()}));
}

void TestJobOptionsCollection::forgetsWhatWasLoadedBefore()
{
    JobOptionsCollection options;
    const auto first = settings(Shipped);
    options.load(m_folder.path(), &first);
    const auto second = settings("[JobOptions]\nMine = b\n");
    options.load(m_folder.path(), &second);
    QCOMPARE(options.names(), QStringList{QStringLiteral("Mine")});
}

QTEST_GUILESS_MAIN(TestJobOptionsCollection)
#include "tst_job_options_collection.moc"
