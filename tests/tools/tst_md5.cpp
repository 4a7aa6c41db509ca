#include "platform/ProcessToolRunner.h"
#include "support/TestArchives.h"
#include "tools/MD5GeneratorClass.h"
#include "tools/Md5Digest.h"

#include <QDialog>
#include <QDir>
#include <QLineEdit>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {

using TestArchives::writeFile;

// md5sum's digest of the file's bytes, read from standard input so that no
// name gets in the way.
QString md5sumOf(const QString& path) {
  QProcess md5sum;
  md5sum.setStandardInputFile(path);
  md5sum.start("md5sum", {});
  md5sum.waitForFinished();
  return QString::fromLatin1(md5sum.readAllStandardOutput().left(32));
}

struct Window {
  ProcessToolRunner runner;
  QLineEdit filepath;
  MD5GeneratorClass md5{runner, &filepath, nullptr};
};

}  // namespace

// The checksum window and pcls with the real md5sum on awkward names.
class Md5Test : public QObject {
  Q_OBJECT

 private:
  QTemporaryDir work_;

 private slots:
  void digestsMatchMd5sum_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("pclsPiece");  // empty: the digest and "\n"
    QTest::newRow("plain") << "plain.bin"
                           << "";
    QTest::newRow("spaces") << "with some spaces.zip"
                            << "";
    QTest::newRow(") = ") << "a) = b.zip"
                          << "b.zip) ";
    QTest::newRow("leading dash") << "-n.zip"
                                  << "";
    QTest::newRow("backslash") << "back\\slash.zip"
                               << "";
    QTest::newRow("newline") << "two\nlines.zip"
                             << "";
  }
  void digestsMatchMd5sum() {
    QFETCH(QString, name);
    QFETCH(QString, pclsPiece);
    const QString path = work_.filePath(name);
    writeFile(path, name.toUtf8().repeated(1000));
    const QString expected = md5sumOf(path);
    QCOMPARE(expected.size(), 32);

    Window window;
    window.filepath.setText(path);
    window.md5.btnMD5Generator();
    QVERIFY(window.md5.md5Window()->isVisible());
    QCOMPARE(window.md5.textField()->text(), expected);

    // The split at the first "= " cuts a name that holds one.
    pcls utility(window.runner);
    QCOMPARE(utility.MD5HashFile(path), pclsPiece.isEmpty() ? expected + "\n" : pclsPiece);
  }

  void theOpenArchiveComesFirstAndAnOpenWindowIsLeftAlone() {
    const QString archive = work_.filePath("open.zip");
    const QString handedOver = work_.filePath("handed over.zip");
    writeFile(archive, "open");
    writeFile(handedOver, "handed over");
    Window window;
    window.md5.setCustomContextMenuPathSource([handedOver] { return handedOver; });
    window.md5.btnMD5Generator();
    QCOMPARE(window.md5.textField()->text(), md5sumOf(handedOver));

    window.filepath.setText(archive);
    window.md5.btnMD5Generator();
    QCOMPARE(window.md5.textField()->text(), md5sumOf(handedOver));
    window.md5.btnClose();
    window.md5.btnMD5Generator();
    QCOMPARE(window.md5.textField()->text(), md5sumOf(archive));

    // An unreadable file leaves the field empty.
    window.md5.btnClose();
    window.filepath.setText(work_.filePath("missing.zip"));
    window.md5.btnMD5Generator();
    QCOMPARE(window.md5.textField()->text(), QString());

    const QString folder = qEnvironmentVariable("QUILLET_SCREENSHOT_DIR");
    if (!folder.isEmpty()) {
      window.md5.btnClose();
      window.filepath.setText(archive);
      window.md5.btnMD5Generator();
      QDir().mkpath(folder);
      window.md5.md5Window()->grab().save(folder + "/md5.png");
    }
  }
};

QTEST_MAIN(Md5Test)
#include "tst_md5.moc"
