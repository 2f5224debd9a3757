#include <QtCore/QObject>
int main(){}
