#include "app/FoldingOptions.h"

#include <QAction>
#include <QCheckBox>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>

// A small window keeps its height for the listing: the options fold into a
// menu that acts through the check boxes themselves.
class FoldingOptionsTest : public QObject {
  Q_OBJECT

 private slots:
  void foldsWithThePageSize_data() {
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<bool>("folded");
    const int tall = FoldingOptions::kFoldBelowHeight;
    QTest::newRow("low") << 800 << tall - 1 << true;
    QTest::newRow("large") << 800 << tall << false;
    QTest::newRow("narrow") << 300 << tall << true;
  }
  void foldsWithThePageSize() {
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(bool, folded);
    QWidget page;
    auto* options =
        new FoldingOptions({new QCheckBox("Extract into a folder named after the archive"),
                            new QCheckBox("Overwrite existing files")},
                           2);
    (new QVBoxLayout(&page))->addWidget(options);
    options->watch(&page);
    page.resize(width, height);
    page.show();
    QVERIFY(QTest::qWaitForWindowExposed(&page));
    QCOMPARE(options->isFolded(), folded);
    QCOMPARE(options->foldedButton()->isVisible(), folded);
    // Unfolded or not, the options never hold the page wider.
    QVERIFY(page.minimumSizeHint().width() < 300);
  }

  void theMenuClicksTheBoxAndFollowsIt() {
    auto* box = new QCheckBox("Overwrite existing files");
    FoldingOptions options({box}, 1);
    QSignalSpy clicks(box, &QCheckBox::clicked);
    QAction* action = options.foldedButton()->menu()->actions().first();
    action->trigger();
    QCOMPARE(clicks.size(), 1);
    QVERIFY(box->isChecked());
    QVERIFY(action->isChecked());
    box->setChecked(false);
    QVERIFY(!action->isChecked());
  }
};

QTEST_MAIN(FoldingOptionsTest)
#include "tst_folding_options.moc"
