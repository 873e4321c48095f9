#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Steps of a walk through the running program by what a screen reader hears of it: walk.py STEPS. Ends with status 1
and the whole tree when what it looks for does not come."""
import subprocess
import sys
import time

import pyatspi

PATIENCE_S = 30


def shown(node):
    """Every item that shows, as (item, role, name)."""
    for child in node or []:
        try:
            if child is None or not child.getState().contains(pyatspi.STATE_SHOWING):
                continue
            yield child, child.getRoleName(), child.name
        except Exception:  # it went while we looked
            continue
        yield from shown(child)


def everything():
    for program in pyatspi.Registry.getDesktop(0):
        for window in program or []:
            yield window, 'window', window.name
            yield from shown(window)


def until(what, condition):
    """Polls: changes of the tree are told one by one, and some not at all."""
    end = time.monotonic() + PATIENCE_S
    while time.monotonic() < end:
        try:
            found = condition()
        except Exception:  # the tree changes under our feet
            found = None
        if found:
            return found
        time.sleep(0.05)
    print('No', what, 'among:', file=sys.stderr)
    for _, role, name in everything():
        print('  ', role, repr(name), file=sys.stderr)
    sys.exit(1)


def find(role, name=None):
    def first():
        return next((item for item, r, n in everything() if r == role and (name is None or n.startswith(name))), None)
    return until(f'{role} {name!r}', first)


def gone(role, name):
    until(f'end of {role} {name!r}', lambda: not [1 for _, r, n in everything() if r == role and n.startswith(name)])


def press(role, name=None):
    action = find(role, name).queryAction()
    action.doAction([action.getName(i) for i in range(action.nActions)].index('Press'))


def is_checked(role, name):
    return find(role, name).getState().contains(pyatspi.STATE_CHECKED)


def keys(*names):
    subprocess.run(['xdotool', 'key', '--delay', '30', *names], check=True)


def focus(role, name):
    find(role, name).queryComponent().grabFocus()
    until(f'focus on {role} {name!r}', lambda: find(role, name).getState().contains(pyatspi.STATE_FOCUSED))


def rows():
    return [name for _, role, name in everything() if role == 'list item' and name.startswith('Magnitud ')]


def strong_event_shows():
    return any(name.startswith('Magnitud 5.2, EL PASO.ILP, ') for name in rows())


def all_rows_show():
    return strong_event_shows() and len(rows()) > 5


def first_start():
    find('alert', '¿Permitir que orvalia envíe notificaciones?')
    press('push button', 'Permitir')
    gone('alert', '¿Permitir')
    until('rows', rows)


def alert():
    press('push button', 'Actualizar terremotos')
    # What is new comes above the rows that show, which stay where they are.
    focus('list', 'Sismos')
    until('the new event', lambda: keys('Home') or strong_event_shows())


def recent_list():
    focus('text', 'Buscar por localización')
    keys('x', 'y', 'z', 'z', 'y')
    find('label', 'Sin resultados')
    keys('Escape')
    until('all rows again', all_rows_show)

    press('push button', 'Abrir filtros')
    until('"All" as the choice', lambda: is_checked('radio button', 'All'))
    press('radio button', 'Moderate')
    until('"Moderate" as the choice', lambda: is_checked('radio button', 'Moderate') and not is_checked('radio button', 'All'))
    until('the strong event alone', lambda: len(rows()) == 1)
    press('push button', 'Reset Filters')
    until('all rows again', all_rows_show)
    keys('Escape')
    gone('radio button', 'Moderate')

    press('list item', 'Magnitud 5.2, ')
    find('label', 'EL PASO.ILP')
    press('push button', 'Atrás')
    until('the list again', all_rows_show)


def other_sections():
    press('list item', 'Mapa')
    find('heading', 'Mapa')
    focus('image', 'Mapa')
    keys('alt+Right')
    until('the name of a marker', lambda: any(role == 'image' and name.endswith(' UTC') for _, role, name in everything()))
    keys('Return')
    press('push button', 'Ver detalle')
    press('push button', 'Atrás')
    find('push button', 'Ver detalle')

    press('list item', 'Estadísticas')
    find('label', 'Últimos 30 días: 57')

    press('list item', 'Histórico')
    until('rows of the history', rows)
    press('push button', 'Abrir filtros')
    press('radio button', 'Año / Mes')
    until('"Año / Mes" as the mode', lambda: is_checked('radio button', 'Año / Mes'))
    find('combo box', 'Año: ')
    press('push button', 'Aplicar')
    gone('combo box', 'Año: ')
    until('rows of the year', rows)


def change_a_setting_and_quit():
    press('push button', 'Ajustes')
    until('notifications switched on', lambda: is_checked('check box', 'Notifications'))
    press('check box', 'Swarm detection')
    until('swarm detection switched on', lambda: is_checked('check box', 'Swarm detection'))
    press('push button', 'Menú principal')
    press('menu item', 'Salir')


def second_start():
    until('rows', rows)
    press('push button', 'Ajustes')
    until('notifications and swarm detection still on',
          lambda: is_checked('check box', 'Notifications') and is_checked('check box', 'Swarm detection'))
    if any(role == 'alert' for _, role, _ in everything()):
        sys.exit('The question was put again')


def failed_start():
    find('label', 'Failed to create ModelContainer: /')
    roles = [role for _, role, _ in everything()]
    if roles.count('window') != 1 or roles.count('push button') != 1:
        sys.exit(f'More than the message and its button: {roles}')
    press('push button', 'Cerrar')


globals()[sys.argv[1]]()
