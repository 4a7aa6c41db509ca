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
  void foldsWithThePageHeight_data() {
    QTest::addColumn<int>("height");
    QTest::addColumn<bool>("folded");
    QTest::newRow("small") << FoldingOptions::kFoldBelowHeight - 1 << true;
    QTest::newRow("large") << FoldingOptions::kFoldBelowHeight << false;
  }
  void foldsWithThePageHeight() {
    QFETCH(int, height);
    QFETCH(bool, folded);
    QWidget page;
    auto* options = new FoldingOptions({new QCheckBox("a"), new QCheckBox("b")}, 2);
    (new QVBoxLayout(&page))->addWidget(options);
    options->watch(&page);
    page.resize(800, height);
    page.show();
    QVERIFY(QTest::qWaitForWindowExposed(&page));
    QCOMPARE(options->isFolded(), folded);
    QCOMPARE(options->foldedButton()->isVisible(), folded);
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
