#pragma once

#include <QByteArray>
#include <QImage>
#include <QSize>
#include <QString>
#include <functional>
#include <memory>

namespace tvx::qt {

/// Makes small pictures of large ones, on other threads: nobody waits for it.
class PictureDecoder {
 public:
  using Ticket = quint64;
  /// Called in a later turn of the loop, on the thread that asked. A null image: it is no picture that can be
  /// shown, or too large a one.
  using Done = std::function<void(const QImage&)>;

  PictureDecoder();
  /// What is still under way is given up; nobody hears of it.
  ~PictureDecoder();
  PictureDecoder(const PictureDecoder&) = delete;
  PictureDecoder& operator=(const PictureDecoder&) = delete;

  /// A picture that fits into `most`, never a larger one than there is.
  Ticket decode_file(const QString& path, QSize most, Done done);
  Ticket decode(const QByteArray& bytes, QSize most, Done done);
  void cancel(Ticket ticket);
  /// Those that are waited for.
  qsizetype waiting() const;

 private:
  struct Work;
  struct Book;
  Ticket enter(std::shared_ptr<Work> work, Done done);

  std::shared_ptr<Book> book_;
};

}  // namespace tvx::qt
