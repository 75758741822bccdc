#pragma once

#include "app/BlockingQuestion.h"
#include "app/FolderListing.h"
#include "platform/FileCatalogue.h"

#include <QByteArray>
#include <QDialog>
#include <QTimer>

#include <memory>
#include <optional>
#include <string>
#include <vector>

class QLabel;
class QStandardItemModel;

namespace veltrano {

class CheckBox;
class FolderListModel;
class FolderListView;
class PathField;
class PushButton;

/// The panel that chooses a folder to scan, a sheet over the main window. Names are bytes in it: any folder
/// can be shown, entered and chosen, whatever its name. Folders are read away from the main thread, so the
/// panel stays alive over a mount that has died. Deletes itself when it is closed; main thread.
class FolderPanel final : public QDialog {
    Q_OBJECT

public:
    /// The catalogue is shared, since a reading that hangs may outlive everything else.
    FolderPanel(std::shared_ptr<FileCatalogue> catalogue, std::string homeFolder, QWidget* parent);
    ~FolderPanel() override;

    /// Shows a folder by its absolute path and forgets what was shown before.
    void openAt(const std::string& path);

    void done(int result) override;

signals:
    /// The user has chosen; the absolute path as bytes. The panel is closed by then.
    void folderChosen(const QByteArray& path);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void createControls();
    PushButton* createTurnButton(const QString& name, const QString& glyph, const QKeySequence& keys,
                                 void (FolderPanel::*turn)());
    void createPlaces();
    void layOut();

    void enter(const std::string& path);
    void goBack();
    void goForward();
    void goUp();
    void showFolder();
    void showListing(const FolderListing& listing);
    void updateNotice();
    void showPath();
    void showMessage(const QString& message);
    void markPlace();
    void selectRow(const std::string& name);
    std::string selectedName() const;

    void choose();
    /// What becomes of a typed path that is a folder's: it is entered, or chosen.
    using Take = void (FolderPanel::*)(const std::string& path);
    void lookForTyped(Take take);
    void takeTyped(const std::string& path, bool isFolder, Take take);
    void finish(const std::string& path);

    // Injected, constant.
    std::shared_ptr<FileCatalogue> m_pCatalogue;
    const std::string m_homeFolder;

    // Children of this widget.
    PushButton* m_pBack = nullptr;
    PushButton* m_pForward = nullptr;
    PushButton* m_pUp = nullptr;
    PathField* m_pField = nullptr;
    QLabel* m_pMessage = nullptr;
    FolderListView* m_pPlaces = nullptr;
    FolderListView* m_pList = nullptr;
    CheckBox* m_pHidden = nullptr;
    PushButton* m_pCancel = nullptr;
    PushButton* m_pSelect = nullptr;
    FolderListModel* m_pFolders = nullptr;
    QStandardItemModel* m_pPlaceRows = nullptr;

    std::vector<std::string> m_history;          // paths, the one shown among them
    std::size_t m_nShown = 0;                    // its place in the history
    std::optional<CatalogueStatus> m_readStatus; // of the folder shown; nothing until all of it is listed
    std::string m_nameToMark; // where the keyboard begins when the folder is read; may be empty
    bool m_bEdited = false;   // the field holds what the user typed
    QTimer m_readingNotice;   // runs while a reading is too young to be told of
    QTimer m_lookingNotice;   // likewise for a typed path

    // Last, so that they are abandoned before anything else goes.
    BlockingQuestion m_reading{*this};
    BlockingQuestion m_looking{*this};
    BlockingQuestion m_placesQuestion{*this};
};

} // namespace veltrano
