// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/kovakit-export.h>

#include <QIcon>
#include <QPixmap>
#include <QString>

#include <array>
#include <map>
#include <utility>

/**
 * The named pictures of the host, in four states and scaled for the display.
 *
 * The host draws each picture at four times its design size and keeps it as PNG files in the
 * "images" folder under its resource folder, one file for each state ("bt_next.png",
 * "bt_next_hover.png", "bt_next_click.png", "bt_next_disable.png"). The description file
 * "images.json" in the resource folder names them:
 *
 *     { "images": ["bt_next"], "tmp_images": ["checkbox_on"] }
 *
 * The pictures of "tmp_images" are those that style sheets refer to by path. A style sheet cannot
 * scale a picture, so initialize() writes scaled copies of them into the folder "tmp_images" under
 * the user data folder, each of them in one step, so that another process never reads half of it.
 * On screens with more than one device pixel per pixel a sharper copy lies beside each
 * ("tmp_checkbox_on@2x.png"); Qt finds it by itself.
 *
 * Nothing in the description file or the pictures can stop the program: what cannot be read is
 * missing, and a picture of more than #maxPicturePixels counts as one that cannot be read.
 * GUI thread only.
 */
class KOVAKIT_EXPORT ImageManager
{
public:
    /** The state that a picture shows, in the order of the files. */
    enum ImageType : int {
        Default = 0, ///< At rest; file name without suffix.
        Hover = 1, ///< Under the pointer; suffix "_hover".
        Click = 2, ///< Pressed; suffix "_click".
        Disable = 3, ///< Disabled; suffix "_disable".
    };

    /** When pictures are read. A value of neither name reads none, ever. */
    enum InitializeType : int {
        PrepareAll = 0, ///< All of them in initialize().
        LazyLoad = 1, ///< The four states of a name when it is first asked for.
    };

    /** The most pixels that a picture file may decode to: 8192 × 8192, 256 MiB in memory. */
    static constexpr qint64 maxPicturePixels = qint64(8192) * 8192;

    /** The one instance of the process, created by the first call; it knows no pictures yet. */
    static ImageManager *getInstance();

    /**
     * Reads the description file, writes the temp pictures and, with PrepareAll, reads every
     * picture.
     *
     * Needs a QApplication and the paths "resource_path" and "user_data_path" in UIPathManager. A
     * description file that is missing or not valid leaves the registry as it is, without a
     * message. May be called again: names read anew are reset, other names stay.
     */
    void initialize(ImageManager::InitializeType type);

    /**
     * The picture of @p name in the state @p type, at the size for this display.
     *
     * A state without a readable file gives the Default picture and a warning, an unknown name a
     * null pixmap and a warning. The copy shares its pixels with the registry. @p type must be one
     * of the four states; any other value counts as Default.
     */
    [[nodiscard]] QPixmap getImage(const QString &name, ImageManager::ImageType type);

    /**
     * The same picture as an icon, with all the pixels that the sharpest screen can show.
     *
     * getImage() knows whole device pixel ratios only; at a ratio of 1.5 its pictures have half the
     * pixels that an icon of the same size can be painted from. Failures are those of getImage().
     */
    [[nodiscard]] QIcon getIcon(const QString &name, ImageManager::ImageType type);

    /** The folder of the picture files. Ends the process if initialize() was never called. */
    [[nodiscard]] const QString &getImageFolder() const;

    /** The folder of the temp pictures. Ends the process if initialize() was never called. */
    [[nodiscard]] const QString &getTempImageFolder() const;

    /** The path of the picture file @p fileName, given without ".png". Checks nothing. */
    [[nodiscard]] QString getImageFullPath(const QString &fileName) const;

    /** The path of the temp picture of @p name. Checks nothing. */
    [[nodiscard]] QString getTempImageFullPath(const QString &name) const;

private:
    static constexpr int stateCount = 4;

    struct ImageFile
    {
        std::array<QString, stateCount> fileNames; // empty: this state cannot be loaded
        std::array<QPixmap, stateCount> pixmaps;
        std::array<QPixmap, stateCount> sharpestPixmaps; // null where pixmaps are as sharp
        bool loaded = false;
    };

    ImageManager() = default;
    Q_DISABLE_COPY(ImageManager)

    void readJson();
    void parseJson(const QString &name);
    void prepareImages();
    void lazyLoad(const QString &name);
    void prepareTempImage(const QString &name);
    void load(ImageFile &image) const;
    std::pair<const ImageFile *, int> find(const QString &name, ImageType type);

    InitializeType m_type = PrepareAll;
    QString m_imageFolder;
    QString m_tempImageFolder;
    std::map<QString, ImageFile> m_images;
};

/**
 * The picture of @p name in the state @p type, from the one ImageManager.
 *
 * @p name is Latin-1; null counts as the empty name. Failures are those of
 * ImageManager::getImage().
 */
[[nodiscard]] KOVAKIT_EXPORT QPixmap getGlobalImage(const char *name, ImageManager::ImageType type);

/** The picture of @p name in the state @p type, from the one ImageManager. */
[[nodiscard]] KOVAKIT_EXPORT QPixmap getGlobalImage(const QString &name,
                                                    ImageManager::ImageType type);
