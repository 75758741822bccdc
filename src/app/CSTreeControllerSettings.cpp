// Settings: taking and storing them, the sheet of preferences, feedback.

#include "app/CSTreeController.h"

#include "app/FeedbackSheet.h"
#include "app/Mail.h"
#include "app/MainWindow.h"
#include "app/PreferencesSheet.h"

namespace veltrano {

void CSTreeController::InitPrefParameters() {
    const LoadedSettings loaded = loadSettings(m_services.settings);
    m_settings = loaded.values;
    loadFolderLists(mFFoldersController, mRecentsController);
    fillVolumesTable();
    mVolsController->reloadData();
    if (loaded.selectedVolume)
        selectVolumeByName(loaded.selectedVolume);
}

void CSTreeController::SavePrefParameters() {
    // What can't be written down holds for this run all the same.
    (void)saveSettings(m_services.settings, m_settings, mVolsController->getSelectedVolume(),
                       mFFoldersController, mRecentsController);
}

void CSTreeController::showPreferences() {
    if (m_pPreferences) {
        m_pPreferences->activateWindow();
        return;
    }
    m_pPreferences = new PreferencesSheet(m_settings, &mainWindow);
    const auto keep = [this](void (PreferencesSheet::*act)(bool), bool SettingValues::*field) {
        connect(m_pPreferences, act, this, [this, field](bool isOn) { m_settings.*field = isOn; });
    };
    keep(&PreferencesSheet::actPlaySound, &SettingValues::m_bPlaySound);
    keep(&PreferencesSheet::actPlayFinishSound, &SettingValues::m_bPlayFinishSound);
    keep(&PreferencesSheet::actShowHint, &SettingValues::m_bShowHint);
    keep(&PreferencesSheet::actForceShowHint, &SettingValues::m_bForceShowHint);
    connect(m_pPreferences, &PreferencesSheet::closePreferences, this, &CSTreeController::closePreferences);
    m_pPreferences->open();
}

void CSTreeController::closePreferences() {
    if (m_pPreferences && m_pPreferences->isVisible()) {
        m_pPreferences->close(); // tells that it is closed, which comes back here
        return;
    }
    m_pPreferences = nullptr; // on its way out by itself
    SavePrefParameters();
}

void CSTreeController::askForFeedback() {
    auto* const sheet = new FeedbackSheet(m_settings.m_bDontAskFB, &mainWindow);
    connect(sheet, &FeedbackSheet::actAgreeSendFB, this, &CSTreeController::createEmailWithFeedBack);
    connect(sheet, &FeedbackSheet::actCloseFBPanel, this, &CSTreeController::SavePrefParameters);
    connect(sheet, &FeedbackSheet::actDontAskFB, this, [this](bool isOn) { m_settings.m_bDontAskFB = isOn; });
    sheet->open();
}

void CSTreeController::actShowFBPanel() {
    createEmailWithFeedBack();
}

void CSTreeController::createEmailWithFeedBack() {
    veltrano::createEmailWithFeedBack(
        [this](const std::string& url) { m_services.desktop.openAddress(url); });
    m_settings.m_bFBSent = true;
    SavePrefParameters();
}

} // namespace veltrano
