#include "ui/progress_text.h"

namespace ui {

StatusView stageView(UploadStage stage, const std::string& completionTime) {
    switch (stage) {
        case UploadStage::preparing:
            return {"pivra_upload_preparing.bmp", "Exporting your data for upload..."};
        case UploadStage::uploading:
            return {"pivra_upload_uploading.bmp", "Transferring file to Pivra..."};
        case UploadStage::uploaded:
            break;
    }
    return {"pivra_upload_uploaded.bmp", "Uploaded " + completionTime};
}

StatusView failedView() {
    return {"pivra_warning.bmp", "Upload failed"};
}

std::string modelWorkspaceText(const std::string& modelName, const std::string& workspaceName) {
    return modelName + " -> " + workspaceName;
}

std::string leftBlanks(std::size_t length, std::size_t rowWidth) {
    return std::string(length + 6 < rowWidth ? rowWidth - length - 3 : 3, ' ');
}

std::string failureReport(const std::string& fileName, const std::string& workspaceName, const std::string& details) {
    std::string text = "Pivra upload failed.";
    if (!fileName.empty()) text += "\n\nFile: " + fileName;
    if (!workspaceName.empty()) text += "\nWorkspace: " + workspaceName;
    return text + "\n\nDetails: " + (details.empty() ? failedWithoutDetails : details);
}

}  // namespace ui
