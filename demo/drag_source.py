#!/usr/bin/python3
"""A file manager's stand-in: a small window whose one icon stands for the file that is named on the command line,
to be dragged onto other windows."""

import sys

from PyQt5.QtCore import QMimeData, Qt, QTimer, QUrl
from PyQt5.QtGui import QDrag
from PyQt5.QtWidgets import QApplication, QLabel


class FileIcon(QLabel):
    def mouseMoveEvent(self, _):
        data = QMimeData()
        data.setUrls([QUrl.fromLocalFile(sys.argv[1])])
        drag = QDrag(self)
        drag.setMimeData(data)
        drag.exec_(Qt.CopyAction)
        # The target asks for the file's name only now.
        QTimer.singleShot(2000, QApplication.quit)


app = QApplication(sys.argv)
icon = FileIcon("file")
icon.setWindowTitle("A file")
icon.setAlignment(Qt.AlignCenter)
icon.setGeometry(20, 1000, 160, 60)
icon.show()
sys.exit(app.exec_())
