#include "tvx/qt/forms/list_view_box.h"

#include <QDateTime>
#include <QDropEvent>
#include <QHash>
#include <QHeaderView>
#include <QLocale>
#include <QMimeData>
#include <QPainter>
#include <QPixmap>
#include <QScrollBar>
#include <algorithm>
#include <utility>

#include "tvx/qt/support/clipboard.h"
#include "tvx/qt/support/picture_decoder.h"
#include "tvx/qt/support/strings.h"
#include "tvx/qt/support/words.h"

namespace tvx::qt {
namespace {

using platform::ColumnContent;

constexpr int picture_side = 48;

/// As the user is used to see it.
QString shown(std::u16string_view text, ColumnContent content) {
  const QString plain = to_qt(text);
  if (content == ColumnContent::Bytes) {
    bool is_number = false;
    const qint64 bytes = plain.toLongLong(&is_number);
    return is_number ? QLocale().formattedDataSize(bytes, 1, QLocale::DataSizeSIFormat) : plain;
  }
  if (content == ColumnContent::Stamp) {
    const QDateTime time = QDateTime::fromString(plain, QStringLiteral("yyyyMMddHHmm"));
    return time.isValid() ? QLocale().toString(time, QLocale::ShortFormat) : plain;
  }
  return plain;
}

/// A sheet with a hill and a sun, while there is no picture.
QPixmap blank_picture(const QPalette& palette, qreal scale) {
  QPixmap pixmap(QSize(picture_side, picture_side) * scale);
  pixmap.setDevicePixelRatio(scale);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  QColor ink = palette.color(QPalette::Text);
  ink.setAlphaF(0.35F);
  painter.setPen(QPen(ink, 1.5));
  painter.drawRoundedRect(QRectF(8, 10, 32, 28), 3, 3);
  painter.setBrush(ink);
  painter.setPen(Qt::NoPen);
  painter.drawEllipse(QPointF(17, 19), 3, 3);
  painter.drawPolygon(QPolygonF({{11, 35}, {21, 25}, {26, 30}, {31, 23}, {37, 35}}));
  return pixmap;
}

/// In the middle of a square, so that names stand below each other.
QPixmap in_square(const QImage& image, qreal scale) {
  QPixmap pixmap(QSize(picture_side, picture_side) * scale);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.drawImage((pixmap.width() - image.width()) / 2, (pixmap.height() - image.height()) / 2, image);
  painter.end();
  pixmap.setDevicePixelRatio(scale);
  return pixmap;
}

}  // namespace

/// The model's rows as Qt's views read them.
class ListViewBox::Rows final : public QAbstractTableModel {
 public:
  Rows(platform::ListView& list, QWidget& view) : list_(list), view_(view) {}

  int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : rows_; }
  int columnCount(const QModelIndex& = {}) const override { return int(list_.columns().size()); }

  QVariant data(const QModelIndex& index, int role) const override {
    if (!index.isValid() || index.row() >= list_.count()) return {};
    const platform::ListItem& item = list_.item(index.row());
    const platform::ListColumn& column = list_.columns()[std::size_t(index.column())];
    if (role == Qt::DisplayRole) return shown(item.in_column(index.column()), column.content);
    if (role == Qt::DecorationRole && index.column() == 0 && item.small_icon > 0) return picture_of(item);
    if (role == Qt::TextAlignmentRole && column.content == ColumnContent::Bytes)
      return int(Qt::AlignRight | Qt::AlignVCenter);
    return {};
  }
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
    if (orientation != Qt::Horizontal) return {};
    if (role == Qt::DisplayRole) return translated(list_.columns()[std::size_t(section)].caption);
    if (role == Qt::TextAlignmentRole) {
      const bool numbers = list_.columns()[std::size_t(section)].content == ColumnContent::Bytes;
      return int((numbers ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    }
    return {};
  }

  void insert(int row) {
    beginInsertRows({}, row, row);
    ++rows_;
    endInsertRows();
  }
  void replace() {
    beginResetModel();
    rows_ = list_.count();
    if (rows_ == 0) forget_pictures();
    endResetModel();
  }
  void make_picture(const QString& name, const std::string& file) {
    const qreal scale = view_.devicePixelRatioF();
    decoder_->decode(QByteArray(file.data(), qsizetype(file.size())),
                     QSize(picture_side, picture_side) * scale, [this, name, scale](const QImage& image) {
                       if (image.isNull()) return;
                       pictures_.insert(name, in_square(image, scale));
                       const int row = list_.find(from_qt(name));
                       if (row >= 0) emit dataChanged(index(row, 0), index(row, 0));
                     });
  }

 private:
  QPixmap picture_of(const platform::ListItem& item) const {
    const auto known = item.has_picture ? pictures_.constFind(to_qt(item.text)) : pictures_.cend();
    return known == pictures_.cend() ? blank() : *known;
  }
  const QPixmap& blank() const {
    if (blank_.isNull()) blank_ = blank_picture(view_.palette(), view_.devicePixelRatioF());
    return blank_;
  }
  void forget_pictures() {
    pictures_.clear();
    decoder_ = std::make_unique<PictureDecoder>();
  }

  platform::ListView& list_;
  QWidget& view_;
  int rows_ = 0;
  QHash<QString, QPixmap> pictures_;  // by the row's text
  mutable QPixmap blank_;
  std::unique_ptr<PictureDecoder> decoder_ = std::make_unique<PictureDecoder>();
};

ListViewBox::ListViewBox(platform::ListView& list, QWidget* parent, UserAct act)
    : QTreeView(parent), list_(list), act_(std::move(act)), rows_(std::make_unique<Rows>(list, *this)) {
  setModel(rows_.get());
  rows_->replace();
  setRootIsDecorated(false);
  setUniformRowHeights(true);
  setAllColumnsShowFocus(true);
  setAcceptDrops(true);
  setEditTriggers(NoEditTriggers);
  setIconSize({picture_side, picture_side});
  setVerticalScrollMode(ScrollPerPixel);
  header()->setSectionsClickable(true);
  header()->setSectionsMovable(false);
  header()->setStretchLastSection(false);
  seen_.setSingleShot(true);
  seen_.setInterval(40);
  connect(&seen_, &QTimer::timeout, this, &ListViewBox::tell_seen_rows);
  connect(header(), &QHeaderView::sectionClicked, this,
          [this](int column) { act_later([this, column] { list_.click_column(column); }); });
  connect(this, &QTreeView::doubleClicked, this, [this](const QModelIndex& place) {
    act_later([this, row = place.row()] { list_.double_click(row); });
  });
  connect(selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          [this](const QModelIndex& place) { act_([this, row = place.row()] { list_.select(row); }); });
  list_.add_observer(*this);
  show_columns();
}

ListViewBox::~ListViewBox() {
  list_.remove_observer(*this);
  setModel(nullptr);
}

QSize ListViewBox::sizeHint() const { return {600, 380}; }

// Names are searched, whichever column of the row was pressed.
void ListViewBox::keyboardSearch(const QString& typed) {
  if (currentIndex().column() > 0)
    selectionModel()->setCurrentIndex(currentIndex().siblingAtColumn(0), QItemSelectionModel::NoUpdate);
  QTreeView::keyboardSearch(typed);
}

void ListViewBox::act_later(std::function<void()> deed) {
  QMetaObject::invokeMethod(
      this, [this, deed = std::move(deed)] { act_(deed); }, Qt::QueuedConnection);
}

// --- following the model ---

void ListViewBox::row_inserted(int row) {
  rows_->insert(row);
  if (list_.count() == 1) viewport()->update();
  seen_.start();
}

void ListViewBox::picture_came(int row, const std::shared_ptr<const std::string>& file) {
  rows_->make_picture(to_qt(list_.item(row).text), *file);
}

void ListViewBox::rows_replaced() {
  {
    // The model keeps what is chosen; a view that starts anew must not choose anything.
    const QSignalBlocker silence(selectionModel());
    rows_->replace();
  }
  header()->setSortIndicatorShown(list_.Sorted());
  if (list_.Sorted()) show_columns();
  show_selection();
  viewport()->update();
  seen_.start();
}

// A hidden column may be the one that is sorted by: the arrow stands at the one that it serves.
void ListViewBox::show_columns() {
  constexpr int name_letters = 34;
  const int letter = fontMetrics().averageCharWidth();
  int last_seen = 0, sorted = list_.SortKey();
  for (int column = 0; column < rows_->columnCount(); ++column) {
    const bool hidden = list_.columns()[std::size_t(column)].hidden;
    setColumnHidden(column, hidden);
    if (!hidden) last_seen = column;
  }
  for (int column = 0; column < rows_->columnCount(); ++column)
    if (isColumnHidden(sorted) && list_.columns()[std::size_t(column)].content == ColumnContent::Bytes)
      sorted = column;
  if (list_.Sorted())
    header()->setSortIndicator(sorted, list_.descending() ? Qt::DescendingOrder : Qt::AscendingOrder);
  header()->setSortIndicatorShown(list_.Sorted());
  if (header()->property("measured").toBool()) return;
  header()->setProperty("measured", true);
  for (int column = 0; column <= last_seen; ++column) {
    header()->setSectionResizeMode(column, column == 0 ? QHeaderView::Stretch : QHeaderView::Interactive);
    header()->resizeSection(column, column == 0 ? letter * name_letters : width_of(column));
  }
}

/// Its widest text and its caption with the arrow of sorting have room.
int ListViewBox::width_of(int column) const {
  const platform::ListColumn& about = list_.columns()[std::size_t(column)];
  const QString widest = about.content == ColumnContent::Stamp   ? shown(u"202612282250", about.content)
                         : about.content == ColumnContent::Bytes ? shown(u"888888888", about.content)
                                                                 : QString(22, u'x');
  const int margin = 2 * (style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) + 4);
  return std::max(fontMetrics().horizontalAdvance(widest) + margin, header()->sectionSizeHint(column));
}

void ListViewBox::columns_changed() { show_columns(); }

void ListViewBox::show_selection() {
  const int row = list_.selected();
  if (row < 0) return clearSelection();
  if (currentIndex().row() == row && selectionModel()->isRowSelected(row)) return;
  const QSignalBlocker silence(selectionModel());
  setCurrentIndex(rows_->index(row, 0));
  scrollTo(rows_->index(row, 0));
  viewport()->update();
}

void ListViewBox::selection_changed() { show_selection(); }
void ListViewBox::note_changed() { viewport()->update(); }

// --- what is seen ---

void ListViewBox::tell_seen_rows() {
  const QModelIndex first = indexAt(viewport()->rect().topLeft()),
                    last = indexAt(viewport()->rect().bottomLeft());
  const int from = first.isValid() ? first.row() : 0;
  const int to = last.isValid() ? last.row() : list_.count() - 1;
  act_([this, from, to] { list_.see_rows(from, to); });
}

void ListViewBox::resizeEvent(QResizeEvent* event) {
  QTreeView::resizeEvent(event);
  seen_.start();
}

void ListViewBox::scrollContentsBy(int dx, int dy) {
  QTreeView::scrollContentsBy(dx, dy);
  seen_.start();
}

void ListViewBox::paintEvent(QPaintEvent* event) {
  QTreeView::paintEvent(event);
  if (list_.note().empty()) return;
  QString text = translated(list_.note());
  if (!list_.note_detail().empty()) text += u'\n' + to_qt(list_.note_detail());
  QPainter painter(viewport());
  constexpr int gap = 24, edge = 6, flags = Qt::AlignCenter | Qt::TextWordWrap;
  if (list_.count() == 0) {
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(viewport()->rect().adjusted(gap, gap, -gap, -gap), flags, text);
    return;
  }
  // Below the rows, and over what lies there.
  const QRect room = viewport()->rect().adjusted(edge, 0, -edge, -edge);
  const int height = painter.boundingRect(room, flags, text).height() + 2 * edge;
  painter.fillRect(QRect(0, viewport()->height() - height, viewport()->width(), height),
                   palette().color(QPalette::ToolTipBase));
  painter.setPen(palette().color(QPalette::ToolTipText));
  painter.drawText(QRect(room.left(), viewport()->height() - height, room.width(), height), flags, text);
}

// --- what is dropped ---

void ListViewBox::dragEnterEvent(QDragEnterEvent* event) {
  event->setAccepted(list_.drag_over(MimeSource(event->mimeData())));
  if (event->isAccepted()) event->setDropAction(Qt::CopyAction);
}

void ListViewBox::dragMoveEvent(QDragMoveEvent* event) {
  dragEnterEvent(static_cast<QDragEnterEvent*>(event));
}

// The program that it comes from waits until this returns, and what follows takes its time.
void ListViewBox::dropEvent(QDropEvent* event) {
  const MimeSource source(event->mimeData());
  if (!list_.drag_over(source)) return event->ignore();
  event->setDropAction(Qt::CopyAction);
  event->accept();
  platform::TransferItems items{
      {std::string(platform::targets::files), source.read(platform::targets::files)}};
  act_later([this, kept = platform::TransferItemSource(std::move(items))] { list_.drop(kept); });
}

}  // namespace tvx::qt
