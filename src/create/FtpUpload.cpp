#include "create/FtpUpload.h"

#include "create/FtpCommands.h"
#include "create/FtpVerdict.h"
#include "create/MailNotice.h"
#include "engine/PathText.h"
#include "engine/ToolProblem.h"
#include "platform/PreferenceKeys.h"
#include "platform/ToolRunner.h"

FtpUpload::FtpUpload(ToolRunner& uploadingProcess, UploadUi& ui,
                     std::atomic<bool>& isUploadingTerminatedByTheUser)
    : uploadingProcess_(uploadingProcess),
      ui_(ui),
      isUploadingTerminatedByTheUser_(isUploadingTerminatedByTheUser) {}

void FtpUpload::uploadFileToFTP(const QString& path, const QString& folder, bool sendMail) {
  using namespace PreferenceKeys;
  const QString address = PreferencesStore::text(kFtpaddress);
  if (address.isEmpty()) {
    ui_.alert(QStringLiteral("FTP settings not configured."),
              QStringLiteral("Please configure your FTP server settings first!"));
    return;
  }
  const QString folderAddress = FtpCommands::folderAddress(address);
  ui_.showUploadingWindow(folderAddress, path);
  const QString link =
      folderAddress + FtpCommands::addressSegment(PathText::lastPathComponent(path));

  ui_.setUploadingIndicator(true);
  ToolRun run = FtpCommands::upload(path, link, PreferencesStore::text(kFtpusername),
                                    PreferencesStore::text(kFtppassword));
  run.childDirectory = folder;
  const ToolResult result = uploadingProcess_.run(run);
  ui_.setUploadingIndicator(false);

  if (!result.started) {
    ui_.alert(QStringLiteral("Missing program"), ToolProblem::of(run, result)->message);
  } else if (const auto failure =
                 FtpVerdict::of(result.errors, isUploadingTerminatedByTheUser_.load())) {
    ui_.alert(failure->title, failure->message);
    if (failure->kind == FtpVerdict::Failure::Kind::Canceled)
      isUploadingTerminatedByTheUser_.store(false);
  } else {
    ui_.alert(QStringLiteral("File uploaded successfuly!\nLink:"), link);
    if (sendMail) {
      if (const auto problem = MailNotice::sendEmail(uploadingProcess_, link))
        ui_.reportFailure(*problem);
    }
  }
  ui_.finishUploading();
}
